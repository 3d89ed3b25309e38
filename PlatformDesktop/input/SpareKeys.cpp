#include "PlatformDesktop/input/SpareKeys.h"

#include <algorithm>
#include <string_view>

#include "PlatformDesktop/input/TypingLayout.h"

namespace qb {

namespace {

/// A key code and the keysym that it was given, and so on.
constexpr std::string_view propertyName = "_QUILLBOX_LENT_KEYS";
constexpr std::uint32_t longestProperty = 512;

}  // namespace

SpareKeys::SpareKeys(InputConnection& connection) : connection_(connection) {
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
      xcb, xcb_intern_atom(xcb, 0, propertyName.size(), propertyName.data()), nullptr));
  if (!atom) return;
  property_ = atom->atom;
  const XcbPointer<xcb_get_property_reply_t> left(xcb_get_property_reply(
      xcb,
      xcb_get_property(xcb, 1, connection_.root, property_, XCB_ATOM_CARDINAL, 0, longestProperty),
      nullptr));
  if (!left || left->format != 32) return;
  const auto* const words = static_cast<const std::uint32_t*>(xcb_get_property_value(left.get()));
  const int count = xcb_get_property_value_length(left.get()) / 4;
  for (int i = 0; i + 1 < count; i += 2) {
    takeBack(static_cast<std::uint8_t>(words[i]), words[i + 1]);
  }
  xcb_flush(xcb);
}

std::optional<std::uint8_t> SpareKeys::keyOf(char32_t character) const {
  const auto found = lent_.find(character);
  return found == lent_.end() ? std::nullopt : std::optional(found->second);
}

bool SpareKeys::isLent(std::uint8_t key) const {
  return std::any_of(lent_.begin(), lent_.end(),
                     [key](const auto& entry) { return entry.second == key; });
}

std::vector<std::uint8_t> SpareKeys::keys() const {
  std::vector<std::uint8_t> keys;
  for (const auto& [character, key] : lent_) keys.push_back(key);
  return keys;
}

bool SpareKeys::lend(std::span<const char32_t> characters, std::span<const std::uint8_t> spare) {
  const auto wanted = characters.first(std::min(characters.size(), capacity(spare)));
  std::vector<std::uint8_t> free(spare.begin(), spare.end());
  const auto isWanted = [&](char32_t character) {
    return std::find(wanted.begin(), wanted.end(), character) != wanted.end();
  };
  for (const auto& [character, key] : lent_) {
    if (!isWanted(character)) free.push_back(key);
  }
  std::vector<std::pair<char32_t, std::uint8_t>> news;
  for (const char32_t character : wanted) {
    if (lent_.contains(character)) continue;
    const std::uint8_t key = free[news.size()];
    std::erase_if(lent_, [key](const auto& entry) { return entry.second == key; });
    news.emplace_back(character, key);
  }
  lent_.insert(news.begin(), news.end());
  writeDown();
  for (const auto& [character, key] : news) setMeaning(key, keysymOfCharacter(character));
  return !wanted.empty();
}

void SpareKeys::giveBack() {
  if (lent_.empty()) return;
  for (const auto& [character, key] : lent_) takeBack(key, keysymOfCharacter(character));
  lent_.clear();
  xcb_delete_property(connection_.xcb.get(), connection_.root, property_);
  xcb_flush(connection_.xcb.get());
}

/// A layout that was loaded meanwhile may have a use for the key.
void SpareKeys::takeBack(std::uint8_t key, std::uint32_t keysym) {
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_get_keyboard_mapping_reply_t> present(
      xcb_get_keyboard_mapping_reply(xcb, xcb_get_keyboard_mapping(xcb, key, 1), nullptr));
  const bool isOurs = present && present->keysyms_per_keycode > 0 &&
                      xcb_get_keyboard_mapping_keysyms(present.get())[0] == keysym;
  if (isOurs) setMeaning(key, XCB_NO_SYMBOL);
}

/// With and without Shift alike: it may still be down from the character before.
void SpareKeys::setMeaning(std::uint8_t key, std::uint32_t keysym) {
  const xcb_keysym_t keysyms[] = {keysym, keysym};
  const std::uint8_t width = keysym == XCB_NO_SYMBOL ? 1 : 2;
  xcb_change_keyboard_mapping(connection_.xcb.get(), 1, key, width, keysyms);
}

void SpareKeys::writeDown() {
  std::vector<std::uint32_t> words;
  for (const auto& [character, key] : lent_) {
    words.push_back(key);
    words.push_back(keysymOfCharacter(character));
  }
  xcb_change_property(connection_.xcb.get(), XCB_PROP_MODE_REPLACE, connection_.root, property_,
                      XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(words.size()),
                      words.data());
}

}  // namespace qb
