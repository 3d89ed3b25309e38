#pragma once

#include <optional>
#include <string>

namespace qb {

/// Moves a file, a folder or a link (not what it leads to) to the trash, beside a note of where it
/// was and when. Answers why it could not, as a sentence for the user, or none.
///
/// What is on the volume of the user's home goes to the home's trash, anything else to that of its
/// own volume, which is made if need be. Nothing is ever copied: it goes by one change of name, or
/// stays where it is. Any thread.
std::optional<std::string> moveToTrash(const std::string& path);

}  // namespace qb
