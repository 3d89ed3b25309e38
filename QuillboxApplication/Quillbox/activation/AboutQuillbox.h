#pragma once

namespace qb {

/// Tells what the program is and whose work it stands on, in place of the panel. Returns when the
/// user has read it. Main thread.
void runAboutQuillbox();

}  // namespace qb
