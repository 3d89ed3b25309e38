#pragma once

#include "Platform/Displays.h"

namespace qb {

/// The first screen whose origin is exactly (0, 0); an empty one when there is none.
Screen primaryScreen(const Displays& displays);

}  // namespace qb
