#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "PlatformDesktop/input/InputConnection.h"
#include "PlatformDesktop/input/InputQueue.h"
#include "PlatformDesktop/input/InputThread.h"
#include "PlatformDesktop/input/SpareKeys.h"
#include "PlatformDesktop/input/TypingLayout.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Types into the program in front, by keys as its user would. Such keys do not come back to this
/// program: no chord, hot key or observer of it takes note.
///
/// Modifiers that the user still holds from what brought this about are waited for, and released in
/// the user's place when that takes too long; Caps Lock is put off meanwhile. Operations return
/// when the server has handed out the last key. Main thread.
class TextTyper {
 public:
  /// Everything must outlive it. `connection` is the main thread's own.
  TextTyper(InputConnection& connection, InputQueue& queue, InputThread& thread)
      : connection_(connection), queue_(queue), thread_(thread), spareKeys_(connection) {}
  ~TextTyper();
  TextTyper(const TextTyper&) = delete;
  TextTyper& operator=(const TextTyper&) = delete;

  /// What calls a block later on the main thread; without it lent keys are given back at the end
  /// only.
  void setPerformLater(std::function<void(TimeInterval, Block)> performLater) {
    performLater_ = std::move(performLater);
  }

  /// How long programs get to look up the meaning of a key before it gets another one: there is no
  /// telling when they have.
  void setLookUpTime(TimeInterval time) { lookUpTime_ = time; }

  /// UTF-8; what is none of it is left out. Control characters press the keys that they stand for.
  /// The modifiers, of those that combinations have, are down all the while. False when the server
  /// cannot type, or not every character; the others are typed then.
  bool typeText(std::string_view text, EventFlags modifiers = 0);
  /// A virtual key code; false when the keyboard has no such key.
  bool pressKey(std::uint16_t keyCode, EventFlags modifiers = 0);

 private:
  /// A character, or a key of its own.
  struct Item {
    char32_t character = 0;
    std::uint8_t key = 0;
  };

  static std::vector<Item> itemsOf(std::string_view text, const KeyboardMap& map);
  bool type(const std::vector<Item>& items, EventFlags modifiers, const KeyboardMap& map);
  std::vector<char32_t> missingFrom(const std::vector<Item>& items, std::size_t start,
                                    const TypingLayout& layout) const;
  /// How the keyboard types it without lent keys. `layout` may know some from before.
  std::optional<TypingStroke> ownStroke(char32_t character, const TypingLayout& layout) const;
  void noteUse();
  void giveBackWhenDue();
  static Moment now();

  InputConnection& connection_;
  InputQueue& queue_;
  InputThread& thread_;
  SpareKeys spareKeys_;
  std::function<void(TimeInterval, Block)> performLater_;
  /// Those that were lent when the layout was read.
  std::vector<std::uint8_t> lentBefore_;
  Moment lastUse_ = 0;
  TimeInterval lookUpTime_ = 0.1;
  bool returnIsScheduled_ = false;
  std::shared_ptr<const bool> lifeSign_ = std::make_shared<const bool>(true);
};

}  // namespace qb
