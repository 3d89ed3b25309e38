#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Pasteboards.h"
#include "PlatformDesktop/clipboard/SelectionConnection.h"
#include "PlatformDesktop/clipboard/SelectionOwner.h"
#include "PlatformDesktop/clipboard/SelectionReader.h"

namespace qb {

/// The CLIPBOARD selection. What its owner marks as a secret counts as no content. Main thread.
class DesktopClipboard : public Pasteboard {
 public:
  /// To the display of the environment.
  DesktopClipboard();
  ~DesktopClipboard() override;
  DesktopClipboard(const DesktopClipboard&) = delete;
  DesktopClipboard& operator=(const DesktopClipboard&) = delete;

  /// Other programs see it with what is written next, or else when the loop runs: those that keep
  /// the clipboard for all of them would put the old content back into one that is empty.
  std::int64_t clearContents() override;
  bool setData(const PropertyList::Data& data, const std::string& type) override;
  std::optional<PropertyList::Data> dataForType(const std::string& type) const override;
  bool writeObjects(const std::vector<const PasteboardWriting*>& objects) override;
  std::vector<std::shared_ptr<const PasteboardItem>> pasteboardItems() const override;
  std::int64_t changeCount() const override;
  /// See `Pasteboards::generalPasteboardChanged`.
  ChangeNotice& changed() { return changed_; }
  /// For whoever has just had a program paste what is there, and is about to put something else
  /// there. See `SelectionOwner`; nothing for another program's content.
  void waitUntilTaken();

 private:
  class ForeignItem;
  /// What another program has put there, for as long as it is there.
  struct Foreign {
    explicit Foreign(SelectionConnection& connection) : reader(connection) {}
    SelectionReader reader;
    /// Changes with each owner.
    std::int64_t generation = 0;
  };

  void handle(const SelectionConnection::Event& event);
  void listen();
  /// Everything that has happened so far is handled then.
  void catchUp() const;
  void countChange();
  bool publish(std::vector<PasteboardContents> items);
  void publishClearingLater();
  bool isOwn() const { return presentOwner_ == owner_.window() && presentOwner_ != XCB_NONE; }
  /// Copied in one of this program's own text fields.
  bool isOfTextField() const;
  std::vector<std::shared_ptr<const PasteboardItem>> foreignItems() const;
  bool isSecret(const std::vector<std::string>& targets) const;

  mutable SelectionConnection connection_;
  std::shared_ptr<Foreign> foreign_;
  SelectionOwner owner_;
  /// The window of whoever has the clipboard now.
  xcb_window_t presentOwner_ = XCB_NONE;
  xcb_window_t timeWindow_ = XCB_NONE;
  std::uint8_t firstXFixesEvent_ = 0;
  /// What this program has put there, for as long as it is there.
  std::vector<PasteboardContents> items_;
  bool isCleared_ = false;
  std::int64_t changeCount_ = 0;
  ChangeNotice changed_;
  std::shared_ptr<const bool> lifeSign_ = std::make_shared<const bool>(true);
};

}  // namespace qb
