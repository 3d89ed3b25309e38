#pragma once

#include <xcb/xcb.h>

// The generated header has a field of that name.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xinput.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

#include <cstdlib>
#include <memory>

namespace qb {

struct FreeDeleter {
  void operator()(void* memory) const { std::free(memory); }
};
/// A reply, an event or an error of XCB.
template <typename T>
using XcbPointer = std::unique_ptr<T, FreeDeleter>;

struct DisconnectDeleter {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XcbConnectionPointer = std::unique_ptr<xcb_connection_t, DisconnectDeleter>;

}  // namespace qb
