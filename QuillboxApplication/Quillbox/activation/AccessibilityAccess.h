#pragma once

#include <cstdint>
#include <string_view>

#include "Platform/Platform.h"

namespace qb {

/// Where the preference program reads what it cannot find out itself: a pasteboard of that name
/// with data of that type, the archive of a dictionary.
inline constexpr std::string_view quillboxInformationPasteboard = "QuillboxInformation";
inline constexpr std::string_view QuillboxInformationType = "QuillboxInformationType";
/// A boolean.
inline constexpr std::string_view QuillboxInformationHasAccessibilityAccessKey =
    "QuillboxInformationHasAccessibilityAccessKey";

/// Whether this process may see and take the desktop's input, told to the preference program too.
/// Main thread.
class AccessibilityAccess {
 public:
  explicit AccessibilityAccess(Platform& platform) : platform_(platform) {}

  /// Publishes the answer when it is not the one of last time, so at the first call always.
  bool hasAccessibilityAccess();

 private:
  void publish(bool access) const;

  Platform& platform_;
  std::int32_t lastAnswer_ = -1;
};

}  // namespace qb
