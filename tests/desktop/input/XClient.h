#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "PlatformDesktop/input/XInput.h"

namespace qb::test {

/// Something that `waitUntil` can wait for.
class Pump {
 public:
  virtual ~Pump() = default;
  virtual int descriptor() const = 0;
  /// Handles all that has come.
  virtual void pump() = 0;
};

/// Pumps until `predicate` holds; false when that takes much too long.
bool waitUntil(const std::vector<Pump*>& pumps, const std::function<bool()>& predicate);

/// Another program on the desktop: a window that notes its keys, hands that type by XTEST.
class XClient : public Pump {
 public:
  struct Key {
    bool down;
    std::uint8_t code;
    std::uint16_t state;
    friend bool operator==(const Key&, const Key&) = default;
  };

  explicit XClient(const std::string& display);
  /// Waits for the server: of a client that hangs up it may drop what it has not read yet, and a
  /// key whose release is dropped stays down for good.
  ~XClient() override { sync(); }

  xcb_connection_t* xcb() const { return connection_.get(); }
  xcb_window_t root() const { return root_; }
  xcb_window_t window() const { return window_; }

  /// Makes its window, and waits until it is managed.
  void openWindow();
  /// A window that no window manager touches; answers when it is there.
  void openBypassWindow(int x, int y, int width, int height);
  void takeFocus();
  /// The keys that its window got, modifiers left out.
  std::vector<Key> keys;
  /// What those presses type, one after the other, in UTF-8.
  std::string text;
  /// Another program has taken the keyboard, by the focus events that this brings.
  bool keyboardIsTaken = false;
  int keyboardReturns = 0;
  int mappingChanges = 0;

  /// Hands, by virtual key code.
  void press(std::uint16_t keyCode);
  void release(std::uint16_t keyCode);
  void tap(std::uint16_t keyCode);
  void button(std::uint8_t number, bool down);
  void movePointer(int x, int y);
  /// All that was sent has been done by the server.
  void sync();

  /// Active grab of the keyboard by this client.
  bool grabKeyboard();
  void ungrabKeyboard();
  /// Active grab of the pointer; false while another client has it.
  bool grabPointer();
  void ungrabPointer();
  /// Core passive grab; false when refused.
  bool grabKey(std::uint16_t keyCode, std::uint16_t modifiers);

  xcb_window_t windowManager();
  /// By the window manager's word.
  xcb_window_t activeWindow();
  /// What a window manager does when it starts.
  void touchWindowManagerProperty();

  int descriptor() const override;
  void pump() override;

 private:
  xcb_atom_t atom(const std::string& name);
  xcb_window_t windowInProperty(const std::string& name);
  void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);

  XcbConnectionPointer connection_;
  xcb_window_t root_ = XCB_NONE, window_ = XCB_NONE;
  bool focused_ = false;
  bool managed_ = false;
};

}  // namespace qb::test
