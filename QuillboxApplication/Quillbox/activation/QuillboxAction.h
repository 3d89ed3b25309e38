#pragma once

#include <cstdint>

namespace qb {

/// What a key can ask of the panel.
enum QuillboxActionCode : std::int32_t {
  QuillboxActionNone = 0,
  QuillboxActionNextItem = 1,
  QuillboxActionPreviousItem = 2,
  QuillboxActionNextTabRow = 3,
  QuillboxActionPreviousTabRow = 4,
  QuillboxActionPreview = 5,
  QuillboxActionInvoke = 6,
  QuillboxActionInvokeAndStay = 7,
  QuillboxActionCycleData = 8,
  QuillboxActionQuickRemove = 9,
  QuillboxActionClose = 10,
  QuillboxActionCopy = 11,
  QuillboxActionPaste = 12,
  QuillboxActionCut = 13,
};

/// One action on its way to the panel.
struct QuillboxAction {
  std::int32_t code = QuillboxActionNone;
  /// The press behind this action is the one that brought the panel up.
  bool activatedApplication = false;

  static QuillboxAction actionWithCode(std::int32_t code) { return {code, false}; }
  static QuillboxAction applicationActiviatingActionWithCode(std::int32_t code) {
    return {code, true};
  }
  friend bool operator==(const QuillboxAction&, const QuillboxAction&) = default;
};

}  // namespace qb
