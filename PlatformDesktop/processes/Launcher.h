#pragma once

#include <string>
#include <vector>

#include "PlatformDesktop/processes/DesktopEntry.h"

namespace qb {

/// Starts a program that lives on without us, in a session of its own. False when it cannot be
/// run. The first word is looked up in PATH; an empty folder is the home.
bool startDetached(const std::vector<std::string>& words, const std::string& workingFolder);
/// Starts an application, with a file to open unless that is empty.
bool startApplication(const DesktopEntry& entry, const std::string& file = {});

}  // namespace qb
