#pragma once

#include <string>

namespace qb {

class Item;

/// Moves the file of a plain file or folder item into a folder, and tells the item its new place.
/// Asks before something of that name is replaced, which is then gone for good. False for every
/// other item, when the user refuses, and when it fails.
///
/// Intended: the question comes also when the file is in that folder already, and consent then
/// costs the file.
bool moveItemToFolder(Item& item, const std::string& folderPath);

}  // namespace qb
