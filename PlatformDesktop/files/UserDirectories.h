#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/FileSystem.h"

namespace qb {

/// The user's folder of a kind. `configuration` is the text of "user-dirs.dirs", which may say
/// otherwise than the English names; a folder that it sets to the home itself is one that the user
/// does without. None for kinds that it does not know.
std::optional<std::string> userDirectory(SearchPathDirectory directory,
                                         std::string_view configuration, const std::string& home);
/// As the environment and the files of this desktop have it. Any thread.
std::optional<std::string> userDirectory(SearchPathDirectory directory);

}  // namespace qb
