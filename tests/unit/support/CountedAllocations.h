#pragma once

#include <cstddef>

namespace qb::test {

/// How often memory has been asked for in this process so far.
std::size_t numberOfAllocations();

}  // namespace qb::test
