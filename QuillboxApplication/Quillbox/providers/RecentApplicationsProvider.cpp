#include "Quillbox/providers/RecentApplicationsProvider.h"

#include <algorithm>
#include <any>

#include "Platform/FileSystem.h"
#include "Platform/Processes.h"
#include "Platform/SharedFileLists.h"
#include "Platform/Workspace.h"
#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

constexpr const char* exemptApplicationsKey = "ExemptApplicationsKey";
constexpr std::string_view applicationExtension = ".app";

Platform& platform() { return quillbox->platform(); }

std::string withoutApplicationExtension(std::string name) {
  for (auto place = name.find(applicationExtension); place != std::string::npos;
       place = name.find(applicationExtension, place)) {
    name.erase(place, applicationExtension.size());
  }
  return name;
}

std::string bundleIdentifierAtPath(const std::string& path) {
  return platform().workspace().bundleIdentifierOfApplicationAtPath(path);
}

bool bundleExistsAtPath(const std::string& path) {
  return platform().fileSystem().fileExistsAtPath(path);
}

}  // namespace

std::shared_ptr<TabRowProviderInformation> RecentApplicationsProvider::information() {
  return std::make_shared<TabRowProviderInformation>(
      "Recent Applications", "RecentApplicationsProvider", [] { return create(); });
}

std::shared_ptr<RecentApplicationsProvider> RecentApplicationsProvider::create() {
  std::shared_ptr<RecentApplicationsProvider> provider(new RecentApplicationsProvider);
  provider->observeList();
  provider->updateRecentApplications();
  return provider;
}

RecentApplicationsProvider::RecentApplicationsProvider() { setCanBeConfigured(true); }

void RecentApplicationsProvider::prepareForDeallocation() {
  observer_.cancel();
  TabRowProvider::prepareForDeallocation();
}

void RecentApplicationsProvider::observeList() {
  const std::weak_ptr<TabRowProvider> weakSelf = weak_from_this();
  observer_ = platform().sharedFileLists().addObserver(
      SharedFileList::RecentApplicationItems, [this, weakSelf] {
        executeBlockAfterDelay(
            [this, weakSelf] {
              if (const auto self = weakSelf.lock()) updateRecentApplications();
            },
            0);
      });
}

void RecentApplicationsProvider::updateRecentApplications() {
  recentApplications_.clear();
  bool finderIsListed = false;
  for (const SharedFileListItem& item :
       platform().sharedFileLists().snapshot(SharedFileList::RecentApplicationItems)) {
    if (item.path.empty()) continue;
    const std::string identifier = bundleIdentifierAtPath(item.path);
    if (identifier == kFinderBundleIdentifier) finderIsListed = true;
    if (isExempt(identifier, item.path)) continue;
    recentApplications_.push_back({withoutApplicationExtension(item.displayName), item.path});
  }
  if (!finderIsListed && !isFinderRunning() && !finderBundlePath_.empty()) {
    recentApplications_.insert(recentApplications_.begin(), {"Finder", finderBundlePath_});
  }
}

bool RecentApplicationsProvider::isFinderRunning() {
  const auto finders = platform().workspace().runningApplicationsWithBundleIdentifier(
      std::string(kFinderBundleIdentifier));
  if (finders.empty()) return false;
  if (finderBundlePath_.empty()) {
    const auto information =
        platform().processes().processInformation(finders.front()->processNumber());
    if (information) finderBundlePath_ = information->bundlePath;
  }
  return true;
}

bool RecentApplicationsProvider::isExempt(const std::string& identifier,
                                          const std::string& path) const {
  return std::any_of(
      exemptApplications_.begin(), exemptApplications_.end(),
      [&](const std::string& exempt) { return exempt == identifier || exempt == path; });
}

std::int64_t RecentApplicationsProvider::numberOfItems() {
  if (!isFinderRunning() && !finderBundlePath_.empty()) updateRecentApplications();
  return static_cast<std::int64_t>(recentApplications_.size());
}

void RecentApplicationsProvider::createItemsWithSize(Size size) {
  for (const RecentApplication& application : recentApplications_) {
    if (!bundleExistsAtPath(application.bundlePath)) continue;
    auto item = ApplicationItem::create({{0, 0}, size}, application.name, application.bundlePath);
    item->setRepresentedObject(application);
    addItem(std::move(item));
  }
}

PropertyList RecentApplicationsProvider::state() const {
  PropertyList state = TabRowProvider::state();
  PropertyList exempt = PropertyList::array();
  for (const std::string& application : exemptApplications_) exempt.append(application);
  state.setObject(exempt, exemptApplicationsKey);
  return state;
}

void RecentApplicationsProvider::restoreState(const PropertyList& state) {
  TabRowProvider::restoreState(state);
  exemptApplications_.clear();
  for (const PropertyList& application : state.objectForKey(exemptApplicationsKey).arrayValue()) {
    if (application.stringValue().empty()) continue;
    exemptApplications_.push_back(application.stringValue());
  }
  updateRecentApplications();
}

TabRowProvider::MenuItems RecentApplicationsProvider::menuItemsForItemConfigure(
    Item& item, MenuItems& existingItems) {
  auto items = TabRowProvider::menuItemsForItemConfigure(item, existingItems);
  auto exempt =
      menuItem("Exempt from Recent Applications", "excludeItem", [this](MenuItem& chosen) {
        const auto target = std::any_cast<std::shared_ptr<Item>>(chosen.representedObject());
        if (const auto* file = dynamic_cast<const FileSystemItem*>(target.get())) {
          excludeItem(file->path());
        }
      });
  exempt->setRepresentedObject(item.shared_from_this());
  exempt->setAttributedTitle(
      Quillbox::menuTitleWithBeginning("Exempt ", item.name(), " from Recent Applications"));
  items.push_back(std::move(exempt));
  return items;
}

TabRowProvider::MenuItems RecentApplicationsProvider::menuItemsForConfigure() {
  auto items = TabRowProvider::menuItemsForConfigure();
  items.push_back(menuItem("Clear Exemption List", "resetExemptionListSelected",
                           [this](MenuItem&) { resetExemptionList(); }));
  return items;
}

void RecentApplicationsProvider::excludeItem(const std::string& path) {
  if (!bundleExistsAtPath(path)) return;
  const std::string identifier = bundleIdentifierAtPath(path);
  exemptApplications_.push_back(identifier.empty() ? path : identifier);
  exemptionsHaveChanged();
}

void RecentApplicationsProvider::resetExemptionList() {
  exemptApplications_.clear();
  exemptionsHaveChanged();
}

void RecentApplicationsProvider::exemptionsHaveChanged() {
  updateRecentApplications();
  if (const auto row = tabRow()) row->itemsHaveChangedWithMaintainSelection(false, false);
}

}  // namespace qb
