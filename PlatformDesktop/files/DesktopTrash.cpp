#include "PlatformDesktop/files/DesktopTrash.h"

#include <utility>

#include "PlatformDesktop/files/TrashFolder.h"
#include "QuillboxCommon/Log.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

void DesktopTrash::recycle(std::vector<std::string> paths, Completion completion) {
  executeBlockInBackground([paths = std::move(paths), completion = std::move(completion)] {
    std::optional<std::string> error;
    for (const std::string& path : paths) {
      const auto reason = moveToTrash(path);
      if (!reason) continue;
      error = error ? *error + '\n' + *reason : *reason;
    }
    executeBlockAfterDelay([completion, error] { completion(error); }, 0);
  });
}

bool DesktopTrash::trashItemAtPath(const std::string& path) {
  const auto reason = moveToTrash(path);
  if (reason) log(*reason);
  return !reason;
}

}  // namespace qb
