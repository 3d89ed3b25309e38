#pragma once

#include <string_view>

namespace qb {

/// The order of two texts in UTF-8, character by character, in which capital letters count as
/// small ones: -1 when `a` comes first, 1 when `b` does, else 0. It knows no language: letters are
/// in the order of their numbers. A byte that is no UTF-8 comes after all characters. Any thread.
int caseInsensitiveCompare(std::string_view a, std::string_view b);

}  // namespace qb
