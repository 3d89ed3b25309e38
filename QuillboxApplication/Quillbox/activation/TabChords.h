#pragma once

#include "Platform/EventTap.h"
#include "Platform/KeyCodes.h"

namespace qb {

/// The chords that are taken away from the desktop, in every state. Plain Option-Tab is not among
/// them: it comes by its hot key.
inline constexpr TapRules::Chord optionShiftTabChord{KeyCodeTab, EventFlagOption | EventFlagShift,
                                                     EventFlagControl | EventFlagCommand};
inline constexpr TapRules::Chord commandTabChord{
    KeyCodeTab, EventFlagCommand, EventFlagShift | EventFlagControl | EventFlagOption};
inline constexpr TapRules::Chord commandShiftTabChord{KeyCodeTab, EventFlagCommand | EventFlagShift,
                                                      EventFlagControl | EventFlagOption};

inline bool isChord(const TapRules::Chord& chord, const TappedEvent& event) {
  return event.keyCode == chord.keyCode && (event.flags & chord.required) == chord.required &&
         (event.flags & chord.forbidden) == 0;
}

}  // namespace qb
