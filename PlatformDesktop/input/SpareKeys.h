#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "PlatformDesktop/input/InputConnection.h"

namespace qb {

/// Keys without a meaning, lent to characters that the keyboard's layout lacks.
///
/// The mapping is the server's and outlives this program, so what is lent is written down in a
/// property of the root window: after a crash the next start gives it back. Real keys are never
/// touched: writing back what they have already has been seen to change them.
class SpareKeys {
 public:
  /// Gives back what an earlier run has left.
  explicit SpareKeys(InputConnection& connection);
  ~SpareKeys() { giveBack(); }
  SpareKeys(const SpareKeys&) = delete;
  SpareKeys& operator=(const SpareKeys&) = delete;

  /// None when no key is lent to it.
  std::optional<std::uint8_t> keyOf(char32_t character) const;
  bool isLent(std::uint8_t key) const;
  /// All that are lent.
  std::vector<std::uint8_t> keys() const;
  /// Lends keys to as many of `characters`, from the first on, as there are keys; `spare` are those
  /// that the layout leaves free. What other characters have is taken from them only then, and
  /// they must have been received by then. False when there is not one key to lend.
  bool lend(std::span<const char32_t> characters, std::span<const std::uint8_t> spare);
  /// How many characters can have one at a time.
  std::size_t capacity(std::span<const std::uint8_t> spare) const {
    return lent_.size() + spare.size();
  }
  bool isEmpty() const { return lent_.empty(); }
  /// All keys lose their meaning again, but for those that something else has given one since.
  void giveBack();

 private:
  void takeBack(std::uint8_t key, std::uint32_t keysym);
  void setMeaning(std::uint8_t key, std::uint32_t keysym);
  void writeDown();

  InputConnection& connection_;
  xcb_atom_t property_ = XCB_NONE;
  std::map<char32_t, std::uint8_t> lent_;
};

}  // namespace qb
