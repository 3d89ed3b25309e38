#pragma once

#include "PlatformSimulated/SimulatedFileSystem.h"

namespace qb::test {

/// The folders that a row can be told to show with one press, all of them.
inline void makeSystemFolders(SimulatedFileSystem& files) {
  for (const char* folder : {"/usr/share/applications", "/Applications/Utilities"}) {
    files.makeFolder(folder);
  }
  for (const char* name :
       {"Documents", "Desktop", "Downloads", "Videos", "Music", "Pictures", "Public", "Library"}) {
    files.makeFolder(std::string("/home/user/") + name);
  }
}

}  // namespace qb::test
