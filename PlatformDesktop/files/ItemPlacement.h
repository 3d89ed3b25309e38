#pragma once

#include <string>

#include "Platform/FileSystem.h"

namespace qb {

/// Moving and copying as `FileSystem` promises it: what is to come is complete, beside its place
/// and under a name of its own, before what is there goes. Any thread.
bool placeByMoving(const std::string& from, const std::string& to, PresentItem presentItem);
bool placeByCopying(const std::string& from, const std::string& to, PresentItem presentItem);

}  // namespace qb
