#pragma once

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <string>

namespace qb {

/// A folder that goes with this object.
class TemporaryFolder {
 public:
  std::string path(const std::string& name = "") const {
    return folder_.path().toStdString() + (name.empty() ? "" : '/' + name);
  }
  /// Makes the folders on the way. Answers the path.
  std::string write(const std::string& name, const std::string& contents) const {
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    std::ofstream(path(name), std::ios::binary) << contents;
    return path(name);
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace qb
