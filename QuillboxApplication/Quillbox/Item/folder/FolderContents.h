#pragma once

#include <string>
#include <vector>

namespace qb {

/// The path of something in a folder.
std::string pathInFolder(const std::string& folder, const std::string& name);

/// The full paths of what users see in a folder, in the order of its listing. Empty when it cannot
/// be read. Main thread.
std::vector<std::string> visibleContentsOfFolderAtPath(const std::string& path);

/// Whether it is what browsers keep a download in until it is complete.
bool isFileBeingDownloaded(const std::string& path);

}  // namespace qb
