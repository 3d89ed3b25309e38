#include "Quillbox/activation/utilities/FileOperations.h"

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/utilities/FileNames.h"
#include "Quillbox/activation/utilities/ReplaceQuestion.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

constexpr TimeInterval notificationDelay = 0.1;
constexpr TimeInterval durationOfSuccess = 1;
constexpr TimeInterval durationOfFailure = 3;

std::string withoutSlashAtTheEnd(std::string folder) {
  while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  return folder;
}

}  // namespace

void FileOperations::moveItems(const std::vector<std::string>& paths, const std::string& toFolder) {
  operateOnItems(paths, toFolder, OperationMove);
}

void FileOperations::copyItems(const std::vector<std::string>& paths, const std::string& toFolder) {
  operateOnItems(paths, toFolder, OperationCopy);
}

void FileOperations::operateOnItems(const std::vector<std::string>& paths,
                                    const std::string& toFolder, Operation operation) {
  const std::string folder = withoutSlashAtTheEnd(toFolder);
  std::vector<FinderFile> queue;
  std::set<std::string> destinations;
  for (const std::string& path : paths) {
    const std::string name = lastPathComponent(path);
    if (!queueFile({name, path, stringWithFormat("%@/%@", folder, name)}, folder, queue,
                   destinations)) {
      return;
    }
  }
  std::int64_t failures = 0;
  for (const FinderFile& file : queue) failures += performOperation(file, operation) ? 0 : 1;
  if (!queue.empty()) tellResult(static_cast<std::int64_t>(queue.size()), failures, operation);
}

bool FileOperations::queueFile(FinderFile file, const std::string& folder,
                               std::vector<FinderFile>& queue,
                               std::set<std::string>& destinations) const {
  // Two files of one name would take the same place, one after the other.
  if (destinations.contains(file.destinationPath) ||
      facade_.platform().fileSystem().fileExistsAtPath(file.destinationPath)) {
    switch (askWhetherToReplace(file.name)) {
      case ReplaceAnswer::Stop:
        return false;
      case ReplaceAnswer::None:
        return true;
      case ReplaceAnswer::KeepBoth:
        file.destinationPath =
            folder + names_.availableFileNameInFolder(
                         folder, lastPathComponentWithoutExtension(file.sourcePath),
                         pathExtension(file.sourcePath), true, destinations);
        break;
      case ReplaceAnswer::Replace:
        file.replaces = true;
        break;
    }
  }
  destinations.insert(file.destinationPath);
  queue.push_back(std::move(file));
  return true;
}

bool FileOperations::performOperation(const FinderFile& file, Operation operation) const {
  FileSystem& fileSystem = facade_.platform().fileSystem();
  const PresentItem presentItem = file.replaces ? PresentItem::IsReplaced : PresentItem::Stays;
  return operation == OperationMove
             ? fileSystem.moveItemAtPath(file.sourcePath, file.destinationPath, presentItem)
             : fileSystem.copyItemAtPath(file.sourcePath, file.destinationPath, presentItem);
}

void FileOperations::tellResult(std::int64_t files, std::int64_t failures,
                                Operation operation) const {
  const char* const infinitive = operation == OperationMove ? "Move" : "Copy";
  const char* const participle = operation == OperationMove ? "Moved" : "Copied";
  std::string text;
  if (failures == 0) {
    text = files == 1 ? stringWithFormat("File %@", participle)
                      : stringWithFormat("%ld Files %@", files, participle);
  } else if (failures == 1) {
    text = stringWithFormat(files == 1 ? "Could not %@ File" : "Could not %@ One File", infinitive);
  } else {
    text = stringWithFormat("%ld Files could not be %@", failures, participle);
  }
  facade_.displayQuillboxNotification(text, failures == 0 ? durationOfSuccess : durationOfFailure,
                                      notificationDelay);
}

}  // namespace qb
