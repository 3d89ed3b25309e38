#pragma once

#include <memory>
#include <string>
#include <vector>

#include "QuillboxCommon/views/Menu.h"

namespace qb {

/// What each entry of these menus stands for: `std::vector<std::string>` of full paths.
using FolderMenuPaths = std::vector<std::string>;

/// A menu that offers to throw away all of `contents`, or those that are older than so much, going
/// by the date of their making. An entry that stands for nothing is disabled. Main thread.
std::shared_ptr<Menu> menuForMoveDownloadItemsToTrash(const FolderMenuPaths& contents,
                                                      const MenuItem::Action& trashContents,
                                                      const MenuItem::Action& dummy);

}  // namespace qb
