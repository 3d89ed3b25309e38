#pragma once

#include <cstdint>

namespace qb {

class Cubby;

/// Whoever shows the clipboard history. Main thread.
class ClipboardManagerClient {
 public:
  virtual ~ClipboardManagerClient() = default;
  /// Whether it wants a clipping; asked only while the history records for its clients.
  virtual bool clipboardCubbyShouldBeRecordedInClipboardHistory(const Cubby& cubby) = 0;
  /// Clippings of these types have been copied, and at least one of them is new.
  virtual void clipboardDidChangeWithTypesAdded(std::uint32_t clipTypes) = 0;
  /// Clippings of these types may have gone.
  virtual void clipboardHistoryChangedWithTypeRemoved(std::uint32_t clipTypes) = 0;
  /// The most clippings of one type that it could ever show.
  virtual std::int64_t theoreticalMaximumItemsNeededInClipboardHistory() = 0;
};

}  // namespace qb
