#include "PlatformDesktop/input/KeyCodeTable.h"

#include <array>

namespace qb::KeyCodeTable {

namespace {

// The first number of a row is the position as the kernel counts it.
constexpr Entry table[] = {
    {1 + 8, 53, "Esc"},
    {2 + 8, 18, "1"},
    {3 + 8, 19, "2"},
    {4 + 8, 20, "3"},
    {5 + 8, 21, "4"},
    {6 + 8, 23, "5"},
    {7 + 8, 22, "6"},
    {8 + 8, 26, "7"},
    {9 + 8, 28, "8"},
    {10 + 8, 25, "9"},
    {11 + 8, 29, "0"},
    {12 + 8, 27, "-"},
    {13 + 8, 24, "="},
    {14 + 8, 51, "Backspace"},
    {15 + 8, 48, "Tab"},
    {16 + 8, 12, "Q"},
    {17 + 8, 13, "W"},
    {18 + 8, 14, "E"},
    {19 + 8, 15, "R"},
    {20 + 8, 17, "T"},
    {21 + 8, 16, "Y"},
    {22 + 8, 32, "U"},
    {23 + 8, 34, "I"},
    {24 + 8, 31, "O"},
    {25 + 8, 35, "P"},
    {26 + 8, 33, "["},
    {27 + 8, 30, "]"},
    {28 + 8, 36, "Return"},
    {29 + 8, 59, "Left Control"},
    {30 + 8, 0, "A"},
    {31 + 8, 1, "S"},
    {32 + 8, 2, "D"},
    {33 + 8, 3, "F"},
    {34 + 8, 5, "G"},
    {35 + 8, 4, "H"},
    {36 + 8, 38, "J"},
    {37 + 8, 40, "K"},
    {38 + 8, 37, "L"},
    {39 + 8, 41, ";"},
    {40 + 8, 39, "'"},
    {41 + 8, 50, "`"},
    {42 + 8, 56, "Left Shift"},
    {43 + 8, 42, "\\"},
    {44 + 8, 6, "Z"},
    {45 + 8, 7, "X"},
    {46 + 8, 8, "C"},
    {47 + 8, 9, "V"},
    {48 + 8, 11, "B"},
    {49 + 8, 45, "N"},
    {50 + 8, 46, "M"},
    {51 + 8, 43, ","},
    {52 + 8, 47, "."},
    {53 + 8, 44, "/"},
    {54 + 8, 60, "Right Shift"},
    {55 + 8, 67, "Keypad *"},
    {56 + 8, 58, "Left Alt"},
    {57 + 8, 49, "Space"},
    {58 + 8, 57, "Caps Lock"},
    {59 + 8, 122, "F1"},
    {60 + 8, 120, "F2"},
    {61 + 8, 99, "F3"},
    {62 + 8, 118, "F4"},
    {63 + 8, 96, "F5"},
    {64 + 8, 97, "F6"},
    {65 + 8, 98, "F7"},
    {66 + 8, 100, "F8"},
    {67 + 8, 101, "F9"},
    {68 + 8, 109, "F10"},
    {69 + 8, 71, "Num Lock"},
    {71 + 8, 89, "Keypad 7"},
    {72 + 8, 91, "Keypad 8"},
    {73 + 8, 92, "Keypad 9"},
    {74 + 8, 78, "Keypad -"},
    {75 + 8, 86, "Keypad 4"},
    {76 + 8, 87, "Keypad 5"},
    {77 + 8, 88, "Keypad 6"},
    {78 + 8, 69, "Keypad +"},
    {79 + 8, 83, "Keypad 1"},
    {80 + 8, 84, "Keypad 2"},
    {81 + 8, 85, "Keypad 3"},
    {82 + 8, 82, "Keypad 0"},
    {83 + 8, 65, "Keypad ."},
    {86 + 8, 10, "ISO key"},
    {87 + 8, 103, "F11"},
    {88 + 8, 111, "F12"},
    {89 + 8, 94, "Ro"},
    {95 + 8, 95, "Keypad ,"},
    {96 + 8, 76, "Enter"},
    {97 + 8, 62, "Right Control"},
    {98 + 8, 75, "Keypad /"},
    {100 + 8, 61, "Right Alt"},
    {102 + 8, 115, "Home"},
    {103 + 8, 126, "Up"},
    {104 + 8, 116, "Page Up"},
    {105 + 8, 123, "Left"},
    {106 + 8, 124, "Right"},
    {107 + 8, 119, "End"},
    {108 + 8, 125, "Down"},
    {109 + 8, 121, "Page Down"},
    {110 + 8, 114, "Insert"},
    {111 + 8, 117, "Delete"},
    {113 + 8, 74, "Mute"},
    {114 + 8, 73, "Volume Down"},
    {115 + 8, 72, "Volume Up"},
    {117 + 8, 81, "Keypad ="},
    {122 + 8, 104, "Kana"},
    {123 + 8, 102, "Eisu"},
    {124 + 8, 93, "Yen"},
    {125 + 8, 55, "Left Super"},
    {126 + 8, 54, "Right Super"},
    {127 + 8, 110, "Menu"},
    {183 + 8, 105, "F13"},
    {184 + 8, 107, "F14"},
    {185 + 8, 113, "F15"},
    {186 + 8, 106, "F16"},
    {187 + 8, 64, "F17"},
    {188 + 8, 79, "F18"},
    {189 + 8, 80, "F19"},
    {190 + 8, 90, "F20"},
};

// Keys of PC keyboards that stand where others have a function key; one way only.
constexpr Entry aliases[] = {
    {99 + 8, 105, "Print Screen"}, {70 + 8, 107, "Scroll Lock"}, {119 + 8, 113, "Pause"}};

constexpr auto byXCode = [] {
  std::array<std::uint16_t, 256> codes{};
  codes.fill(unknownKeyCode);
  for (const Entry& entry : table) codes[entry.xCode] = entry.keyCode;
  for (const Entry& entry : aliases) codes[entry.xCode] = entry.keyCode;
  return codes;
}();

const Entry* find(std::uint16_t keyCode) {
  for (const Entry& entry : table) {
    if (entry.keyCode == keyCode) return &entry;
  }
  return nullptr;
}

}  // namespace

std::span<const Entry> entries() { return table; }

std::uint16_t keyCodeFromX(std::uint8_t xCode) { return byXCode[xCode]; }

std::optional<std::uint8_t> xCodeFromKeyCode(std::uint16_t keyCode) {
  const Entry* entry = find(keyCode);
  return entry ? std::optional(entry->xCode) : std::nullopt;
}

std::string_view nameOf(std::uint16_t keyCode) {
  const Entry* entry = find(keyCode);
  return entry ? entry->name : std::string_view();
}

}  // namespace qb::KeyCodeTable
