#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "Quillbox/activation/HotKeyActivation.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

class AppDelegate;

/// Turns keys into actions on the panel: those that come as hot keys (or chords of the tap), which
/// may raise the panel, and those that come as plain key events while it is up.
class KeyCommands {
 public:
  explicit KeyCommands(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}
  ~KeyCommands();
  KeyCommands(const KeyCommands&) = delete;
  KeyCommands& operator=(const KeyCommands&) = delete;

  /// These two do nothing while their setting is off.
  void processCommandTabWithHotKeyID(std::int32_t hotKeyID);
  void processOptionTabWithHotKeyID(std::int32_t hotKeyID);
  void processHotKeyActivation(const HotKeyActivation& activation);
  /// Each acts on a pressed key in the next pass of the loop in the default mode; the input monitor
  /// does not look at the keyboard before. `selector` must be a string literal.
  /// One that the processing of a Tab begins with, which takes a pass more.
  void performTabLater(std::string_view selector, std::function<void()> action);
  /// Gives the key to the application delegate, yet not before the Tabs that were pressed before
  /// it.
  void performKeyDownLater(const Event& key);
  /// Whether the key was taken: it always is, but during user interaction.
  bool keyDown(const Event& event);

 private:
  void performLater(std::string_view selector, std::function<void()> action);
  void schedule(const HotKeyActivation& activation);
  void performKeyDownAfterTabs(const Event& key, std::uint64_t tabsBefore);

  AppDelegate& appDelegate_;
  std::uint64_t tabsPressed_ = 0, tabsDealtWith_ = 0;
};

}  // namespace qb
