#pragma once

#include <cstdint>
#include <optional>

#include "Quillbox/activation/ActivationTypes.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Recognises two taps of the left Command key from looks at its state. Half a second is the limit
/// for each tap and for the pause between them, by the moments of those looks.
class CommandKeyDoubleTap {
 public:
  /// One look. True when it has seen the end of the second tap.
  bool monitorKeysForCommandKeyDoubleTapActivation(bool keyIsDown, Moment now);
  /// Another key came between, or the panel is up.
  void resetCommandKeyDoubleTapActivation();

 private:
  ActivationKeyState activationKeyState_ = ActivationKeyUp;
  std::int64_t activationKeyTapCount_ = 0;
  std::optional<Moment> lastTapCompletionTime_;
  Moment activationKeyStateDownStartTime_ = 0;
};

}  // namespace qb
