#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Platform/KeyCodes.h"
#include "PlatformDesktop/input/DesktopInput.h"
#include "QuillboxCommon/Log.h"
#include "XClient.h"
#include "XServer.h"

namespace qb::test {

inline constexpr TapRules::Chord superTab{KeyCodeTab, EventFlagCommand,
                                          EventFlagShift | EventFlagControl | EventFlagOption};
inline constexpr TapRules::Chord superShiftTab{KeyCodeTab, EventFlagCommand | EventFlagShift,
                                               EventFlagControl | EventFlagOption};
inline constexpr TapRules::Chord altShiftTab{KeyCodeTab, EventFlagOption | EventFlagShift,
                                             EventFlagControl | EventFlagCommand};

inline constexpr std::uint16_t KeyCodeNumLock = 71;

/// Collects the log while it lives.
class LogRecorder : public LogSink {
 public:
  LogRecorder() { setLogSink(this); }
  ~LogRecorder() override { setLogSink(nullptr); }
  void write(std::string_view text) override;
  bool standardErrorIsTerminal() const override { return false; }
  int count(std::string_view text) const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

/// The main thread's side with a bell, as a run loop host would have it.
class InputUnderTest : public Pump {
 public:
  explicit InputUnderTest(const std::string& display);
  ~InputUnderTest() override;

  DesktopInput& operator*() { return *input_; }
  DesktopInput* operator->() { return input_.get(); }

  /// Creates the tap in all modes; it notes what it sees and answers by the rules.
  void createTap(const TapRules& rules);
  /// Rules from now on.
  void setRules(const TapRules& rules);
  void setEveryKeyDown(bool everyKeyDown);

  std::vector<TappedEvent> tapped;
  /// Runs after an event has been noted.
  std::function<void(const TappedEvent&)> onTapped;
  std::vector<HotKeyID> hotKeys;

  RunLoopMode mode = RunLoopMode::Default;
  PointerSpace space{Rect::make(0, 0, 800, 600), 1};
  std::vector<std::uint32_t> ownWindows;
  int windowsAskedFor = 0;
  bool allowed = true;

  int descriptor() const override { return bell_; }
  void pump() override;

 private:
  int bell_;
  TapRules rules_;
  std::unique_ptr<DesktopInput> input_;
};

/// A desktop with a window manager, one client with the focus, and the input under test.
class InputDesk : public ::testing::Test {
 protected:
  explicit InputDesk(WindowManagerKeys keys = WindowManagerKeys::None);

  void restartWindowManager(WindowManagerKeys keys);
  bool waitFor(const std::function<bool()>& predicate);
  /// Types a key that nobody takes and waits until the client has it: all that went before has
  /// been handed out by then.
  void typeProbe();
  /// Types the chord into the client, and answers whether it has been spared the key. To try to
  /// grab the chord would tell as well, but keep it from the input just when that comes for it.
  bool chordIsTaken(const std::vector<std::uint16_t>& modifiers, std::uint16_t keyCode);
  /// A whole Super+Tab, released in the usual order.
  void superTabTap();
  /// Waits until the client has lost and got the keyboard once more.
  bool keyboardComesBack();

  LogRecorder log_;
  XServer server_;
  Program windowManager_;
  XClient client_;
  InputUnderTest input_;

 private:
  int returnsSeen_ = 0;
};

/// Short forms of tapped keys: "+48 command", "-48 command", "+48 command repeat".
std::string describe(const TappedEvent& event);
std::vector<std::string> describe(const std::vector<TappedEvent>& events);

}  // namespace qb::test
