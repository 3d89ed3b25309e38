#include "PlatformDesktop/input/KeyCodeTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "PlatformDesktop/input/Combination.h"

namespace qb::test {
namespace {

struct Row {
  const char* keyboardRow;
  /// The kernel's position of the first key; the others follow.
  int first;
  std::vector<std::uint16_t> keyCodes;
};

constexpr std::uint16_t none = KeyCodeTable::unknownKeyCode;

const Row rows[] = {
    {"Esc, digits, Backspace", 1, {53, 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24, 51}},
    {"Tab to Return", 15, {48, 12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30, 36}},
    {"Control, A to grave", 29, {59, 0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39, 50}},
    {"Shift, backslash, Z to Shift", 42, {56, 42, 6, 7, 8, 9, 11, 45, 46, 43, 47, 44, 60}},
    {"keypad *, Alt, space, Caps Lock", 55, {67, 58, 49, 57}},
    {"F1 to F10, Num Lock", 59, {122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 71}},
    {"keypad 7 to .", 71, {89, 91, 92, 78, 86, 87, 88, 69, 83, 84, 85, 82, 65}},
    {"ISO key, F11, F12", 86, {10, 103, 111}},
    {"Enter, Control, keypad /", 96, {76, 62, 75}},
    {"Alt, none, Home to Delete",
     100,
     {61, none, 115, 126, 116, 123, 124, 119, 125, 121, 114, 117}},
    {"volume", 113, {74, 73, 72}},
    {"Super, Menu", 125, {55, 54, 110}},
    {"F13 to F20", 183, {105, 107, 113, 106, 64, 79, 80, 90}},
};

TEST(KeyCodeTable, NamesEveryPositionOfTheKeyboard) {
  for (const Row& row : rows) {
    int position = row.first;
    for (const std::uint16_t keyCode : row.keyCodes) {
      EXPECT_EQ(KeyCodeTable::keyCodeFromX(static_cast<std::uint8_t>(position + 8)), keyCode)
          << row.keyboardRow << ", position " << position;
      ++position;
    }
  }
}

TEST(KeyCodeTable, LeadsBackToTheSamePosition) {
  for (const Row& row : rows) {
    int position = row.first;
    for (const std::uint16_t keyCode : row.keyCodes) {
      if (keyCode != none) {
        EXPECT_EQ(KeyCodeTable::xCodeFromKeyCode(keyCode), position + 8) << row.keyboardRow;
      }
      ++position;
    }
  }
}

TEST(KeyCodeTable, HoldsEachCodeOnce) {
  std::set<std::uint16_t> keyCodes;
  std::set<int> xCodes;
  for (const auto& entry : KeyCodeTable::entries()) {
    EXPECT_TRUE(keyCodes.insert(entry.keyCode).second) << entry.keyCode;
    EXPECT_TRUE(xCodes.insert(entry.xCode).second) << int{entry.xCode};
    EXPECT_LT(entry.keyCode, 127) << entry.name;
  }
}

TEST(KeyCodeTable, PcKeysStandForFunctionKeysOneWay) {
  EXPECT_EQ(KeyCodeTable::keyCodeFromX(99 + 8), 105);
  EXPECT_EQ(KeyCodeTable::keyCodeFromX(70 + 8), 107);
  EXPECT_EQ(KeyCodeTable::keyCodeFromX(119 + 8), 113);
  EXPECT_EQ(KeyCodeTable::xCodeFromKeyCode(105), 183 + 8);
}

TEST(KeyCodeTable, KnowsNothingOfOtherCodes) {
  EXPECT_EQ(KeyCodeTable::keyCodeFromX(0), none);
  EXPECT_EQ(KeyCodeTable::keyCodeFromX(255), none);
  EXPECT_EQ(KeyCodeTable::xCodeFromKeyCode(none), std::nullopt);
  EXPECT_EQ(KeyCodeTable::xCodeFromKeyCode(500), std::nullopt);
  EXPECT_EQ(KeyCodeTable::nameOf(500), "");
}

TEST(Combination, IsNamedInTheWordsOfTheDesktop) {
  const struct {
    Combination combination;
    const char* name;
  } table[] = {
      {{48, EventFlagOption}, "Alt+Tab"},
      {{48, EventFlagOption | EventFlagShift}, "Alt+Shift+Tab"},
      {{48, EventFlagCommand | EventFlagShift}, "Super+Shift+Tab"},
      {{4, EventFlagCommand}, "Super+H"},
      {{53, combinationFlags}, "Ctrl+Alt+Super+Shift+Esc"},
      {{12, 0}, "Q"},
      {{200, EventFlagControl}, "Ctrl+key 200"},
  };
  for (const auto& row : table) EXPECT_EQ(nameOf(row.combination), row.name);
}

}  // namespace
}  // namespace qb::test
