#pragma once

#include <optional>
#include <string>

#include "PlatformDesktop/processes/DesktopEntry.h"

namespace qb {

/// The desktop entry that lies at a path; none when there is no such file, or it starts no program.
/// Any thread.
std::optional<DesktopEntry> readDesktopEntry(const std::string& path);

/// Whether users take the file for an application: a desktop entry that is installed, or that its
/// owner has marked as one to run. Any other might be a trap in the guise of a document. Any
/// thread.
bool isApplicationFile(const std::string& path);

}  // namespace qb
