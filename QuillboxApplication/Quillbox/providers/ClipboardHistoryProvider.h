#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/Item/ClipItem.h"
#include "Quillbox/managers/clipboard/ClipboardManagerClient.h"
#include "Quillbox/providers/TabRowProvider.h"

namespace qb {

/// The newest clippings of the clipboard history, of the types and as many as the user wishes. The
/// history keeps what any such row could show, whatever this one shows. Main thread.
class ClipboardHistoryProvider : public TabRowProvider, public ClipboardManagerClient {
 public:
  static std::shared_ptr<TabRowProviderInformation> information();
  static std::shared_ptr<ClipboardHistoryProvider> create();

  void prepareForDeallocation() override;
  std::string name() const override { return "Clipboard History"; }
  std::string className() const override { return "ClipboardHistoryProvider"; }
  std::int64_t numberOfItems() override;
  bool haveItemsChanged() override { return itemsHaveChanged_; }
  void createItemsWithSize(Size size) override;
  void assignTabRowToAllItems() override;
  void restoreState(const PropertyList& state) override;
  PropertyList state() const override;
  /// Deletes the clipping for good. With the Option key held nobody is asked.
  bool removeItemFromTabRow(Item& item, bool confirmation) override;
  MenuItems menuItemsForConfigure() override;

  bool clipboardCubbyShouldBeRecordedInClipboardHistory(const Cubby& cubby) override;
  void clipboardDidChangeWithTypesAdded(std::uint32_t clipTypes) override;
  void clipboardHistoryChangedWithTypeRemoved(std::uint32_t clipTypes) override;
  std::int64_t theoreticalMaximumItemsNeededInClipboardHistory() override;

  std::int32_t defaultClipAction() const { return defaultClipAction_; }
  /// A mask of `ClipType`.
  std::uint32_t clipboardTypes() const { return clipboardTypes_; }
  std::int64_t maximumNumberOfItems() const { return maximumNumberOfItems_; }
  /// Takes what is in the history now.
  void updateItems();

 private:
  ClipboardHistoryProvider();
  void updateInstructionalMessage();
  void updateItemNames();
  /// Makes the icons that an opening would otherwise have to wait for, one at a time.
  void prepareIcons(std::size_t index);

  std::shared_ptr<MenuItem> typeEntry(const char* title, const char* actionName, ClipType type);
  std::shared_ptr<MenuItem> actionEntry(const char* title, const char* actionName,
                                        ClipAction action);
  std::shared_ptr<MenuItem> removalEntry(const char* title, const char* actionName,
                                         const char* question, const char* what,
                                         std::uint32_t clipTypes);

  bool itemsHaveChanged_ = false;
  std::int32_t defaultClipAction_ = ClipActionCopy;
  std::uint32_t clipboardTypes_ = ClipTypeText | ClipTypeImage;
  std::int64_t maximumNumberOfItems_;
  /// The newest first.
  std::vector<std::string> pathsToClipFiles_;
  /// Changes with the paths.
  std::uint64_t generation_ = 0;
};

}  // namespace qb
