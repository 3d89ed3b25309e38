#pragma once

namespace qb {

class Platform;

/// This program's own entry among what the desktop starts at login. Failures go unreported.
void addQuillboxAsLoginItem(Platform& platform);
/// Removes every entry of it, of which a user may have made several.
void removeQuillboxFromLoginItems(Platform& platform);

}  // namespace qb
