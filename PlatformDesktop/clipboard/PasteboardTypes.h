#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qb {

/// What programs here call the types of a pasteboard when they offer or ask for them, the best name
/// first. A type that has no such name is called what it is.
std::vector<std::string> targetsOfType(std::string_view type);

/// The type of what a program offers by that name. Several names can be of one type, but each is of
/// one only; a name that is none of them is a type of its own.
std::string typeOfTarget(std::string_view target);

/// The one name of a text in the oldest of all forms, each byte a character.
inline constexpr std::string_view latinTextTarget = "STRING";

}  // namespace qb
