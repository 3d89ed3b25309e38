#include "Quillbox/managers/DropboxManager.h"

#include <algorithm>

#include "Platform/FileSystem.h"
#include "Platform/UserDefaults.h"
#include "Platform/Workspace.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

constexpr const char* dropboxFolderPathKey = "DropboxFolderPath";
constexpr const char* usualFolder = "~/Dropbox";
constexpr const char* usualName = "Dropbox";
constexpr const char* bundleIdentifier = "com.getdropbox.dropbox";
constexpr TimeInterval noticeDuration = 2;

}  // namespace

DropboxManager::DropboxManager(Quillbox& facade) : facade_(facade) {
  setDefaultDropboxFolderPath();
}

FileSystem& DropboxManager::files() const { return facade_.platform().fileSystem(); }

bool DropboxManager::isFolder(const std::string& path) const {
  return (files().itemInfoFlagsAtPath(path) & ItemInfoIsContainer) != 0;
}

// The folder.

void DropboxManager::setDefaultDropboxFolderPath() {
  const std::string specified =
      facade_.platform().userDefaults().objectForKey(dropboxFolderPathKey).stringValue();
  dropboxFolderPath_.clear();
  for (const std::string& path : {specified, files().stringByExpandingTildeInPath(usualFolder)}) {
    if (!dropboxFolderPath_.empty() || path.empty() || !isFolder(path)) continue;
    dropboxFolderPath_ = path;
  }
}

void DropboxManager::setDropboxFolderPath(const std::string& path) {
  dropboxFolderPath_ = path;
  facade_.platform().userDefaults().setObject(path.empty() ? PropertyList() : PropertyList(path),
                                              dropboxFolderPathKey);
  for (const auto& delegate : delegates_.members()) {
    if (path.empty()) {
      delegate->dropboxFolderHasBecomeUnspecified();
    } else {
      delegate->dropboxFolderHasBeenSpecified(path);
    }
  }
}

void DropboxManager::locateDropboxFolder() {
  const auto chosen = facade_.runOpenPanelWithAllowFiles(false, true, {}, "");
  if (!chosen || chosen->empty()) return;
  const std::string& path = chosen->front();
  if (lastPathComponent(path) != usualName &&
      !facade_.getConfirmationWithTitle("Dropbox Folder?",
                                        "This doesn't appear to be a Dropbox folder.  Are you sure "
                                        "you want to use this folder?",
                                        "Use Folder")) {
    return;
  }
  setDropboxFolderPath(path);
}

void DropboxManager::addDelegate(const std::shared_ptr<DropboxManagerDelegate>& delegate) {
  if (delegate) delegates_.add(delegate);
}

void DropboxManager::removeDelegate(const DropboxManagerDelegate& delegate) {
  delegates_.remove(&delegate);
}

// What is in it.

bool DropboxManager::moveFileToDropbox(const std::string& path, std::string* newPath) {
  if (newPath != nullptr) newPath->clear();
  if (dropboxFolderPath_.empty()) return false;
  const std::string destination = dropboxFolderPath_ + '/' + lastPathComponent(path);
  const std::string name = Quillbox::fileNameFromFullPath(path, false);
  const bool replaces = files().fileExistsAtPath(destination);
  if (replaces && !canReplaceItem(destination, name)) return false;
  if (!files().moveItemAtPath(path, destination,
                              replaces ? PresentItem::IsReplaced : PresentItem::Stays)) {
    facade_.displayMessage("The file could not be moved.", "Unable to Move");
    return false;
  }
  facade_.displayQuillboxNotification(
      stringWithFormat("The file \"%@\" was\rsuccessfully moved to your Dropbox.", name),
      noticeDuration);
  if (newPath != nullptr) *newPath = destination;
  return true;
}

bool DropboxManager::canReplaceItem(const std::string& path, const std::string& name) {
  if (!facade_.getConfirmationWithTitle(
          "Move to Dropbox",
          stringWithFormat("An item named \"%@\" already exists in your Dropbox.  Do you wish to "
                           "replace it with the item you are moving?",
                           name),
          "Replace")) {
    return false;
  }
  if (files().isDeletableFileAtPath(path)) return true;
  facade_.displayMessage(
      "The file could not be moved becuase the pre-existing item could not be removed.",
      "Unable to Move");
  return false;
}

std::int64_t DropboxManager::numberOfItemsInDropboxFolder() const {
  if (dropboxFolderPath_.empty()) return 0;
  const auto names = files().contentsOfDirectoryAtPath(dropboxFolderPath_);
  return std::count_if(names.begin(), names.end(),
                       [](const std::string& name) { return !name.starts_with('.'); });
}

// The program.

bool DropboxManager::isDropboxInstalled() const {
  return !facade_.platform()
              .workspace()
              .pathForApplicationWithBundleIdentifier(bundleIdentifier)
              .empty();
}

bool DropboxManager::isDropboxRunning() const {
  return !facade_.platform()
              .workspace()
              .runningApplicationsWithBundleIdentifier(bundleIdentifier)
              .empty();
}

}  // namespace qb
