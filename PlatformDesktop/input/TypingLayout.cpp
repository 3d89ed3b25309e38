#include "PlatformDesktop/input/TypingLayout.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <bit>

namespace qb {

namespace {

struct XkbDeleter {
  void operator()(xkb_context* object) const { xkb_context_unref(object); }
  void operator()(xkb_keymap* object) const { xkb_keymap_unref(object); }
  void operator()(xkb_state* object) const { xkb_state_unref(object); }
};
template <class Object>
using XkbPointer = std::unique_ptr<Object, XkbDeleter>;

constexpr std::uint16_t shiftBit = XCB_MOD_MASK_SHIFT;

/// The keypad's keys change with Num Lock and send more than their character.
bool isOnKeypad(xkb_keysym_t keysym) {
  return keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal;
}

}  // namespace

class TypingLayout::Reader {
 public:
  Reader(TypingLayout& layout, xkb_keymap* keymap) : layout_(layout), keymap_(keymap) {}

  void readModifiers(xcb_connection_t* xcb) {
    const XcbPointer<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(xcb, xcb_get_modifier_mapping(xcb), nullptr));
    const int width = reply ? reply->keycodes_per_modifier : 0;
    for (int i = 0; i < 8 * width; ++i) {
      const std::uint8_t key = xcb_get_modifier_mapping_keycodes(reply.get())[i];
      if (key == 0) continue;
      const auto bit = static_cast<std::size_t>(i / width);
      const xkb_keysym_t keysym = firstKeysym(key);
      if (layout_.modifierKeys_[bit] == 0 && keysym != XKB_KEY_NoSymbol) {
        layout_.modifierKeys_[bit] = key;
      }
      if (keysym == XKB_KEY_ISO_Level3_Shift) {
        layout_.modifierKeys_[bit] = key;
        levelThreeBit_ = static_cast<std::uint16_t>(1U << bit);
      }
    }
  }

  void readCharacters() {
    const xkb_layout_index_t groups = xkb_keymap_num_layouts(keymap_);
    for (xkb_layout_index_t i = 0; i < groups; ++i) {
      readGroup((layout_.group_ + i) % groups);
    }
  }

  void readSpareKeys() {
    for (unsigned key = firstKey(); key <= lastKey(); ++key) {
      if (xkb_keymap_num_layouts_for_key(keymap_, key) == 0) {
        layout_.spareKeys_.push_back(static_cast<std::uint8_t>(key));
      }
    }
  }

 private:
  unsigned firstKey() const { return xkb_keymap_min_keycode(keymap_); }
  unsigned lastKey() const { return std::min(xkb_keymap_max_keycode(keymap_), 255U); }

  xkb_keysym_t firstKeysym(unsigned key) const {
    const xkb_keysym_t* keysyms = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap_, key, 0, 0, &keysyms);
    return count == 1 ? keysyms[0] : XKB_KEY_NoSymbol;
  }

  /// Groups that were read before are preferred, and so are strokes with fewer modifiers.
  void readGroup(xkb_layout_index_t group) {
    std::unordered_map<char32_t, TypingStroke> found;
    for (unsigned key = firstKey(); key <= lastKey(); ++key) {
      const xkb_layout_index_t count = xkb_keymap_num_layouts_for_key(keymap_, key);
      // Where a key has fewer groups than the keyboard they begin anew.
      if (count != 0) readKey(key, group, group % count, found);
    }
    layout_.strokes_.merge(found);
  }

  void readKey(unsigned key, xkb_layout_index_t group, xkb_layout_index_t ownGroup,
               std::unordered_map<char32_t, TypingStroke>& found) {
    const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap_, key, ownGroup);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
      const xkb_keysym_t* keysyms = nullptr;
      const int count = xkb_keymap_key_get_syms_by_level(keymap_, key, ownGroup, level, &keysyms);
      if (count != 1 || isOnKeypad(keysyms[0])) continue;
      const char32_t character = xkb_keysym_to_utf32(keysyms[0]);
      const auto modifiers = modifiersOfLevel(key, ownGroup, level);
      if (character < 32 || character == 127 || !modifiers) continue;
      const TypingStroke stroke{static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(group),
                                *modifiers};
      const auto [entry, isNew] = found.emplace(character, stroke);
      if (!isNew && std::popcount(entry->second.modifiers) > std::popcount(stroke.modifiers)) {
        entry->second = stroke;
      }
    }
  }

  std::optional<std::uint16_t> modifiersOfLevel(unsigned key, xkb_layout_index_t group,
                                                xkb_level_index_t level) const {
    xkb_mod_mask_t masks[32];
    const std::size_t count =
        xkb_keymap_key_get_mods_for_level(keymap_, key, group, level, masks, std::size(masks));
    std::optional<std::uint16_t> easiest;
    for (std::size_t i = 0; i < count; ++i) {
      if ((masks[i] & ~static_cast<unsigned>(shiftBit | levelThreeBit_)) != 0) continue;
      const auto mask = static_cast<std::uint16_t>(masks[i]);
      if (!easiest || std::popcount(mask) < std::popcount(*easiest)) easiest = mask;
    }
    return easiest;
  }

  TypingLayout& layout_;
  xkb_keymap* keymap_;
  std::uint16_t levelThreeBit_ = 0;
};

std::optional<TypingLayout> TypingLayout::read(xcb_connection_t* xcb) {
  if (!xkb_x11_setup_xkb_extension(
          xcb, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
          XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr)) {
    return std::nullopt;
  }
  const XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
  const std::int32_t device = xkb_x11_get_core_keyboard_device_id(xcb);
  if (!context || device < 0) return std::nullopt;
  const XkbPointer<xkb_keymap> keymap(
      xkb_x11_keymap_new_from_device(context.get(), xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap) return std::nullopt;
  const XkbPointer<xkb_state> state(xkb_x11_state_new_from_device(keymap.get(), xcb, device));
  if (!state) return std::nullopt;

  TypingLayout layout;
  layout.group_ = static_cast<std::uint8_t>(
      xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE));
  layout.capsLockIsOn_ =
      (xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_LOCKED) & XCB_MOD_MASK_LOCK) != 0;
  Reader reader(layout, keymap.get());
  reader.readModifiers(xcb);
  reader.readCharacters();
  reader.readSpareKeys();
  return layout;
}

std::optional<TypingStroke> TypingLayout::strokeFor(char32_t character) const {
  const auto found = strokes_.find(character);
  return found == strokes_.end() ? std::nullopt : std::optional(found->second);
}

std::uint8_t TypingLayout::modifierKey(std::uint16_t bit) const {
  const auto index = static_cast<std::size_t>(std::countr_zero(bit));
  return index < modifierKeys_.size() ? modifierKeys_[index] : std::uint8_t{0};
}

std::uint32_t keysymOfCharacter(char32_t character) { return xkb_utf32_to_keysym(character); }

}  // namespace qb
