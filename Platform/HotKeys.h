#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace qb {

/// Modifier bits of hot keys.
enum HotKeyModifier : std::uint32_t {
  HotKeyModifierCommand = 0x100,
  HotKeyModifierShift = 0x200,
  HotKeyModifierOption = 0x800,
  HotKeyModifierControl = 0x1000,
};

/// What a hot key is known by: a four-character signature in one value, and a number.
struct HotKeyID {
  std::uint32_t signature = 0;
  std::uint32_t id = 0;
  friend bool operator==(const HotKeyID&, const HotKeyID&) = default;
};

/// The four characters of `text` as one value, first character highest.
constexpr std::uint32_t fourCharacterCode(const char (&text)[5]) {
  std::uint32_t code = 0;
  for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(text[i]);
  return code;
}

/// One press of a hot key.
struct HotKeyPress {
  HotKeyID id;
  /// The keyboard repeats it, since the key is held down.
  bool isRepeat = false;
};

/// Key combinations that come to this process wherever the keyboard is. Main thread.
class HotKeys {
 public:
  /// A registration; its destruction unregisters.
  class Registration {
   public:
    virtual ~Registration() = default;
  };
  /// Called on the main thread for each press, repeats included. Answers whether the press has been
  /// dealt with; one that has not goes on to the dialog that listens for keys, if there is one.
  using Handler = std::function<bool(const HotKeyPress&)>;

  virtual ~HotKeys() = default;
  /// `InstallEventHandler`: the one receiver of all hot keys.
  virtual void installEventHandler(Handler handler) = 0;
  /// `RegisterEventHotKey`. None when the combination is taken already by this process (the first
  /// registration stays) or by another one, which the platform logs with the combination.
  [[nodiscard]] virtual std::unique_ptr<Registration> registerEventHotKey(std::uint16_t keyCode,
                                                                          std::uint32_t modifiers,
                                                                          HotKeyID id) = 0;
  /// Whether another program, the window manager among them, has this combination for itself. A
  /// desktop that keeps no list of them is asked by trial (`CopySymbolicHotKeys` elsewhere). False
  /// for what this process holds, and for keys that the keyboard lacks.
  virtual bool isHeldByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers) = 0;
};

}  // namespace qb
