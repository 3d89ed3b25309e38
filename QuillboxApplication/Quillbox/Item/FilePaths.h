#pragma once

#include <string>

namespace qb {

/// What follows the last slash, slashes at the end aside; "/" for the root.
std::string lastPathComponent(const std::string& path);
/// The path without its last component and the slash before that; "/" when that is the root. Empty
/// for a name alone.
std::string pathOfParentFolder(const std::string& path);
/// Without dot; empty when the last component has none. A dot at its start or end makes none.
std::string pathExtension(const std::string& path);
std::string lastPathComponentWithoutExtension(const std::string& path);
/// How users see the last component of a path, with or without its extension: "%20", left over from
/// an address, shows as the blank that it means.
std::string fileNameFromFullPath(const std::string& path, bool withPathExtension);

}  // namespace qb
