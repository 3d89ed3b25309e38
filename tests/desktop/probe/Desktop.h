#pragma once

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace probe {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// What xcb hands out has to be freed with free().
struct Freed {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, Freed>;

struct Area {
  std::int16_t x = 0;
  std::int16_t y = 0;
  std::uint16_t width = 0;
  std::uint16_t height = 0;
};

/// The pixels of an area, row by row.
using Picture = std::vector<std::uint32_t>;

/// A managed window, as the window manager lists it.
struct Client {
  xcb_window_t window = 0;
  std::string name;  ///< The second half of WM_CLASS.
  std::uint32_t processId = 0;
};

/// The hands and eyes of a test on an X display: it types and clicks by XTEST and sees what any
/// other program sees. Nothing in here waits for a fixed time; each wait ends as soon as what it
/// waits for is there, and otherwise at its deadline. One thread.
class Desktop {
 public:
  /// None when the display does not answer. An empty name stands for $DISPLAY.
  static std::unique_ptr<Desktop> connect(const std::string& display);
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  Area screen() const;
  /// Returns when the server has carried out all that was asked before.
  void synchronize();

  /// Hands. A key is named by its X name ("Super_L", "Tab", "a"); false for a name that is on no
  /// key of the layout.
  bool key(const std::string& name, bool down);
  /// Presses the keys in order and releases them in the opposite one, without a pause in between
  /// even on a machine that stands still for a while. False as above, with nothing done.
  bool tap(const std::vector<std::string>& names);
  /// On a machine that stands still a key would repeat that a test meant to press once.
  void stopAutoRepeat();
  void button(std::uint8_t number, bool down);
  void movePointer(std::int16_t x, std::int16_t y);
  /// Releases every key and button that is down.
  void releaseAll();

  /// Eyes: windows.
  xcb_window_t activeWindow();
  /// The one that gets what is typed, unless somebody holds the keyboard.
  xcb_window_t focusedWindow();
  std::string className(xcb_window_t window);
  /// In one line; empty without one.
  std::string title(xcb_window_t window);
  std::vector<Client> clients();
  /// The mapped children of the root window of this class, bypassing ones included.
  std::vector<xcb_window_t> mappedWindows(const std::string& className);
  Area geometry(xcb_window_t window);
  bool selectionIsOwned(const std::string& name);
  /// Asks the window manager to bring the window to the front, as a task bar would.
  void activate(xcb_window_t window);
  /// Whether keyboard and pointer can be grabbed, which they are for a moment.
  bool inputIsFree();
  /// Whether another client holds the core grab of this chord on the root window. `modifiers` is a
  /// mask of XCB_MOD_MASK_*.
  bool chordIsTaken(std::uint16_t modifiers, const std::string& key);

  /// Waits for a property of the root window or the tree below it to make `holds` true.
  bool waitUntil(const std::function<bool()>& holds, Seconds timeout);

  /// Eyes: pixels of the whole display, as it looks.
  Picture picture(const Area& area);
  /// The moment of the first look that shows another picture, or none at the deadline. `rest` lies
  /// between two looks, and leaves the processor to the program that is being watched.
  std::optional<Clock::time_point> waitForChange(const Area& area, const Picture& before,
                                                 Seconds timeout, Seconds rest = Seconds(0.001));

  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t root() const { return screen_->root; }
  xcb_atom_t atom(const std::string& name);

 private:
  explicit Desktop(xcb_connection_t* connection, int screenNumber);
  std::vector<std::uint32_t> cardinals(xcb_window_t window, const std::string& property);
  std::string text(xcb_window_t window, xcb_atom_t property);
  xcb_keycode_t keycode(xcb_keysym_t keysym);
  xcb_keycode_t keycode(const std::string& name);
  void attachSharedMemory();
  /// Goes out with the next flush.
  void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);

  xcb_connection_t* connection_;
  xcb_screen_t* screen_ = nullptr;
  std::map<std::string, xcb_atom_t> atoms_;
  xcb_shm_seg_t segment_ = 0;
  std::uint32_t* memory_ = nullptr;
};

}  // namespace probe
