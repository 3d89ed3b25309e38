// A source of its own: where the compiler sees both ends of an allocation it takes ours for a
// mismatch.
#include "support/CountedAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> count = 0;

void* allocate(std::size_t size) noexcept {
  count.fetch_add(1, std::memory_order_relaxed);
  return std::malloc(size > 0 ? size : 1);
}

}  // namespace

// All plain forms together: a mixture of ours and the library's would part what belongs together.
void* operator new(std::size_t size) {
  if (void* const memory = allocate(size)) return memory;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace qb::test {

std::size_t numberOfAllocations() { return count.load(std::memory_order_relaxed); }

}  // namespace qb::test
