#include "PlatformDesktop/input/TextTyper.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "Platform/ControlCharacters.h"
#include "PlatformDesktop/input/KeyInjection.h"

namespace qb {

namespace {

/// How long a program may take to look up what a key means that it has got, when nobody waits for
/// its looking.
constexpr TimeInterval givingBackDelay = 0.4;

void sleepFor(TimeInterval seconds) {
  if (seconds > 0) std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

/// The character at `position`, which moves on; none for bytes that are no UTF-8.
std::optional<char32_t> nextCharacter(std::string_view text, std::size_t& position) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned first = byte(position);
  const std::size_t length = first < 0x80 ? 1 : first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
  char32_t character = length == 1 ? first : first & (0x7fU >> length);
  std::size_t end = position + 1;
  for (; end < text.size() && end < position + length && (byte(end) & 0xc0) == 0x80; ++end) {
    character = character << 6 | (byte(end) & 0x3fU);
  }
  const bool isWhole = end == position + length && (length == 1 || first >= 0xc0);
  position = end;
  if (!isWhole || character > 0x10ffff) return std::nullopt;
  return character;
}

}  // namespace

TextTyper::~TextTyper() {
  if (!spareKeys_.isEmpty()) sleepFor(lastUse_ + givingBackDelay - now());
}

Moment TextTyper::now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool TextTyper::typeText(std::string_view text, EventFlags modifiers) {
  const KeyboardMap map = queue_.map();
  const auto items = itemsOf(text, map);
  return items.empty() || type(items, modifiers, map);
}

bool TextTyper::pressKey(std::uint16_t keyCode, EventFlags modifiers) {
  const KeyboardMap map = queue_.map();
  const auto keys = map.xCodes(keyCode);
  return !keys.empty() && type({{0, keys.front()}}, modifiers, map);
}

std::vector<TextTyper::Item> TextTyper::itemsOf(std::string_view text, const KeyboardMap& map) {
  std::vector<Item> items;
  for (std::size_t position = 0; position < text.size();) {
    const auto character = nextCharacter(text, position);
    if (!character) continue;
    if (const auto keyCode = keyCodeOfControlCharacter(*character)) {
      const auto keys = map.xCodes(*keyCode);
      if (!keys.empty()) items.push_back({0, keys.front()});
    } else if (keysymOfCharacter(*character) != XCB_NO_SYMBOL) {
      items.push_back({*character, 0});
    }
  }
  return items;
}

std::optional<TypingStroke> TextTyper::ownStroke(char32_t character,
                                                 const TypingLayout& layout) const {
  const auto stroke = layout.strokeFor(character);
  const bool isLent =
      stroke && std::find(lentBefore_.begin(), lentBefore_.end(), stroke->key) != lentBefore_.end();
  return isLent ? std::nullopt : stroke;
}

/// What the layout lacks of the items from `start` on, each once.
std::vector<char32_t> TextTyper::missingFrom(const std::vector<Item>& items, std::size_t start,
                                             const TypingLayout& layout) const {
  const std::size_t most = spareKeys_.capacity(layout.spareKeys());
  std::vector<char32_t> missing;
  for (std::size_t i = start; i < items.size() && missing.size() < most; ++i) {
    const char32_t character = items[i].character;
    if (items[i].key != 0 || ownStroke(character, layout)) continue;
    if (std::find(missing.begin(), missing.end(), character) == missing.end()) {
      missing.push_back(character);
    }
  }
  return missing;
}

bool TextTyper::type(const std::vector<Item>& items, EventFlags modifiers, const KeyboardMap& map) {
  lentBefore_ = spareKeys_.keys();
  const auto layout = TypingLayout::read(connection_.xcb.get());
  if (!layout) return false;
  KeyInjection injection(connection_, thread_, map);
  injection.begin(*layout);
  const std::uint16_t always = map.modifiers(modifiers);
  bool complete = true;
  std::vector<std::uint8_t> spare = layout->spareKeys();
  for (std::size_t i = 0; i < items.size(); ++i) {
    const Item& item = items[i];
    TypingStroke stroke{item.key, layout->group(), 0};
    if (item.key == 0) {
      const auto own = ownStroke(item.character, *layout);
      if (!own && !spareKeys_.keyOf(item.character)) {
        // A key must keep its meaning until who got it has looked it up.
        if (!spareKeys_.isEmpty()) {
          injection.sync();
          sleepFor(lookUpTime_);
        }
        if (!spareKeys_.lend(missingFrom(items, i, *layout), spare)) {
          complete = false;
          continue;
        }
        std::erase_if(spare, [this](std::uint8_t key) { return spareKeys_.isLent(key); });
        injection.sync();
      }
      stroke = own ? *own : TypingStroke{*spareKeys_.keyOf(item.character), layout->group(), 0};
    }
    stroke.modifiers |= always;
    injection.press(stroke);
  }
  injection.end();
  if (!spareKeys_.isEmpty()) noteUse();
  return complete;
}

void TextTyper::noteUse() {
  lastUse_ = now();
  giveBackWhenDue();
}

void TextTyper::giveBackWhenDue() {
  if (!performLater_ || std::exchange(returnIsScheduled_, true)) return;
  performLater_(std::max(lastUse_ + givingBackDelay - now(), 0.0),
                [this, alive = std::weak_ptr(lifeSign_)] {
                  if (alive.expired()) return;
                  returnIsScheduled_ = false;
                  if (now() < lastUse_ + givingBackDelay) return giveBackWhenDue();
                  spareKeys_.giveBack();
                });
}

}  // namespace qb
