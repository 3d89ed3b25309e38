#pragma once

#include <set>
#include <string>
#include <string_view>

namespace qb {

/// The places where file systems that users know of are mounted, from the kernel's table of mounts
/// ("/proc/self/mountinfo"): the root, and what is mounted for media or in `home`. What the system
/// mounts for itself is no volume to a user, and neither are hidden places.
std::set<std::string> volumesOfMountTable(std::string_view table, const std::string& home);

/// The same by the table as it is now. Any thread.
std::set<std::string> mountedVolumes();

/// Whether `path`, a folder, is one of them now. Asks no file system that might not answer. Any
/// thread.
bool isMountedVolume(const std::string& path);

}  // namespace qb
