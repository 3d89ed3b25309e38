#include "Quillbox/Item/ApplicationItem.h"

#include <algorithm>

#include "Platform/Workspace.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/Process.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

/// An application that was told to quit stays in the row, dimmed, until its process has gone.
constexpr double quittingAlpha = 0.5;

}  // namespace

std::shared_ptr<ApplicationItem> ApplicationItem::create(const Rect& frame,
                                                         const std::string& path) {
  return create(frame, fileNameFromFullPath(path, false), path);
}

std::shared_ptr<ApplicationItem> ApplicationItem::create(const Rect& frame, const std::string& name,
                                                         const std::string& path) {
  return create(frame, quillbox->platform().workspace().bundleIdentifierOfApplicationAtPath(path),
                name, path);
}

std::shared_ptr<ApplicationItem> ApplicationItem::create(const Rect& frame,
                                                         const std::string& bundleIdentifier,
                                                         const std::string& name,
                                                         const std::string& path) {
  std::shared_ptr<ApplicationItem> item(new ApplicationItem(frame, bundleIdentifier, name, path));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<ApplicationItem> ApplicationItem::create(const Rect& frame,
                                                         const PropertyList& savedState) {
  std::shared_ptr<ApplicationItem> item(new ApplicationItem(frame, savedState));
  item->beginShowingIcon();
  return item;
}

ItemInformation ApplicationItem::information() {
  return {"Application", "ApplicationItem", [](const Rect& frame, const PropertyList& savedState) {
            return create(frame, savedState);
          }};
}

ApplicationItem::ApplicationItem(const Rect& frame, const std::string& bundleIdentifier,
                                 const std::string& name, const std::string& path)
    : FileSystemItem(frame, name, path), bundleIdentifier_(bundleIdentifier) {}

ApplicationItem::ApplicationItem(const Rect& frame, const PropertyList& savedState)
    : FileSystemItem(frame, savedState) {}

std::shared_ptr<Item> ApplicationItem::createFromState(const Rect& frame,
                                                       const PropertyList& savedState) const {
  return create(frame, savedState);
}

std::string ApplicationItem::bundleIdentifierAtPath() const {
  return quillbox->platform().workspace().bundleIdentifierOfApplicationAtPath(path());
}

bool ApplicationItem::isFinder() const {
  return bundleIdentifierAtPath() == kFinderBundleIdentifier;
}

std::optional<ProcessSerialNumber> ApplicationItem::representedProcess() const {
  const auto* process = std::any_cast<std::shared_ptr<Process>>(&representedObject());
  if (process == nullptr) return std::nullopt;
  return (*process)->processNumber;
}

std::shared_ptr<RunningApplication> ApplicationItem::runningApplication(
    const std::string& identifier) const {
  auto& workspace = quillbox->platform().workspace();
  const auto process = representedProcess();
  const auto instances = process ? workspace.runningApplications()
                                 : workspace.runningApplicationsWithBundleIdentifier(identifier);
  const auto found = std::find_if(instances.begin(), instances.end(), [&](const auto& instance) {
    return !process || instance->processNumber() == *process;
  });
  return found != instances.end() ? *found : nullptr;
}

void ApplicationItem::invoke() {
  const std::string identifier = bundleIdentifierAtPath();
  if (identifier == kFinderBundleIdentifier) {
    if (const auto instance = runningApplication(identifier)) {
      instance->activateWithOptions(ApplicationActivateIgnoringOtherApps);
      return;
    }
  }
  quillbox->platform().workspace().launchApplicationAtPath(
      path(), 0, LaunchConfiguration{.instance = representedProcess()});
}

void ApplicationItem::quit() {
  if (isFinder()) return;
  const auto application = runningApplication(bundleIdentifierAtPath());
  if (const auto row = tabRow()) row->selectItemAtIndexOrNearest(row->indexOfSelectedItem() + 1);
  view()->setAlphaValue(quittingAlpha);
  if (application) application->terminate();
}

void ApplicationItem::hide() {
  if (const auto application = runningApplication(bundleIdentifierAtPath())) application->hide();
}

}  // namespace qb
