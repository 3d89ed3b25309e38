#pragma once

#include <compare>
#include <cstdint>
#include <string>

#include "QuillboxCommon/views/Event.h"

namespace qb {

inline constexpr EventFlags combinationFlags =
    EventFlagShift | EventFlagControl | EventFlagOption | EventFlagCommand;

/// A key with exactly these of the four modifiers held; locks do not matter.
struct Combination {
  std::uint16_t keyCode = 0;
  EventFlags flags = 0;

  friend auto operator<=>(const Combination&, const Combination&) = default;
};

/// For messages, in the words of this desktop: "Alt+Shift+Tab".
std::string nameOf(const Combination& combination);

}  // namespace qb
