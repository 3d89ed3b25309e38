#pragma once

#include <cstdint>

namespace qb {

/// What a clipping is of, as bits of a mask.
enum ClipType : std::uint32_t {
  ClipTypeText = 1,
  ClipTypeImage = 2,
  ClipTypeUnknown = 4,
};

/// What stands for clippings of every type.
inline constexpr std::uint32_t everyClipType = 0xFFFFFFFF;

/// When the history records what is copied.
enum ClipboardHistoryCaptureMode : std::int32_t {
  /// What some client asks for.
  ClipboardCaptureForClients = 0,
  /// All of it; so does any other value but 0.
  ClipboardCaptureAlways = 1,
};

}  // namespace qb
