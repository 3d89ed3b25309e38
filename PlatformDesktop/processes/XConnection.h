#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qb {

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using XReply = std::unique_ptr<Reply, FreeReply>;

/// A connection to the X server, and how properties are read from it. One thread at a time.
class XConnection {
 public:
  /// To the display of the environment.
  XConnection();
  ~XConnection();
  XConnection(const XConnection&) = delete;
  XConnection& operator=(const XConnection&) = delete;

  bool isUsable() const { return xcb_connection_has_error(connection_) == 0; }
  xcb_connection_t* get() const { return connection_; }
  xcb_window_t root() const { return root_; }
  xcb_atom_t atom(std::string_view name) const;

  /// Asks for a property; `read...` waits for the answer. Asking for many first and reading then
  /// takes one round trip.
  xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property,
                                std::uint32_t words = 1024) const;
  std::vector<std::uint32_t> readNumbers(xcb_get_property_cookie_t cookie) const;
  std::string readText(xcb_get_property_cookie_t cookie) const;
  std::vector<std::uint32_t> numbers(xcb_window_t window, xcb_atom_t property,
                                     std::uint32_t words = 1024) const {
    return readNumbers(ask(window, property, words));
  }

  /// Sends a message of 32-bit values about `window` to the window manager.
  void sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                           const std::vector<std::uint32_t>& values) const;
  void flush() const { xcb_flush(connection_); }

 private:
  xcb_connection_t* connection_;
  xcb_window_t root_ = 0;
};

}  // namespace qb
