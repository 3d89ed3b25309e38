#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Quillbox/activation/utilities/FinderFile.h"

namespace qb {

class FileNames;
class Quillbox;

/// Moving and copying files into a folder. Where a name is taken there the user is asked, ahead of
/// the whole, so that "Stop" leaves everything as it is. Nothing goes that the user has not said
/// may go. How it ended is told in a notification. Main thread.
class FileOperations {
 public:
  FileOperations(Quillbox& facade, const FileNames& names) : facade_(facade), names_(names) {}

  void moveItems(const std::vector<std::string>& paths, const std::string& toFolder);
  void copyItems(const std::vector<std::string>& paths, const std::string& toFolder);

 private:
  enum Operation : std::int32_t { OperationCopy = 0, OperationMove = 1 };

  void operateOnItems(const std::vector<std::string>& paths, const std::string& toFolder,
                      Operation operation);
  /// Has the file's destination settled, with the user if need be. False: the whole is to stop.
  bool queueFile(FinderFile file, const std::string& folder, std::vector<FinderFile>& queue,
                 std::set<std::string>& destinations) const;
  bool performOperation(const FinderFile& file, Operation operation) const;
  void tellResult(std::int64_t files, std::int64_t failures, Operation operation) const;

  Quillbox& facade_;
  const FileNames& names_;
};

}  // namespace qb
