#pragma once

#include <vector>

#include "Quillbox/activation/shortcuts/MASShortcut.h"

namespace qb {

class Settings;

/// The combinations that this program has for itself at all times, with these settings. It has no
/// menu bar; these stand where the key equivalents of one would.
std::vector<MASShortcut> ownShortcuts(const Settings& settings);

}  // namespace qb
