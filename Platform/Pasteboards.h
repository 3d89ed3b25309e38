#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

class Pasteboard;

/// What can be put on a pasteboard, as one item there.
class PasteboardWriting {
 public:
  virtual ~PasteboardWriting() = default;
  /// The types in which it can be had, the best first.
  virtual std::vector<std::string> writableTypesForPasteboard(
      const Pasteboard& pasteboard) const = 0;
  /// 0: the data is there at once.
  virtual std::uint32_t writingOptionsForType(const std::string& type,
                                              const Pasteboard& pasteboard) const = 0;
  /// Data, to be kept as it is.
  virtual PropertyList pasteboardPropertyListForType(const std::string& type) const = 0;
};

/// The data of one item by type, the best first.
using PasteboardContents = std::vector<std::pair<std::string, PropertyList::Data>>;

/// What an object gives; none when one of its types has no data, or when it has no type.
inline std::optional<PasteboardContents> contentsOfObject(const PasteboardWriting& object,
                                                          const Pasteboard& pasteboard) {
  PasteboardContents contents;
  for (const std::string& type : object.writableTypesForPasteboard(pasteboard)) {
    const PropertyList data = object.pasteboardPropertyListForType(type);
    if (data.kind() != PropertyList::Kind::Data) return std::nullopt;
    contents.emplace_back(type, data.dataValue());
  }
  if (contents.empty()) return std::nullopt;
  return contents;
}

/// One thing on a pasteboard, in all types in which it was put there. It is what was found: once
/// the pasteboard has other content, it may have nothing more to give.
class PasteboardItem {
 public:
  virtual ~PasteboardItem() = default;
  /// None when there is nothing of that type; an empty value is something. Waits a moment at most
  /// for the program that has the data.
  virtual std::optional<PropertyList::Data> dataForType(const std::string& type) const = 0;
};

/// An item whose data is all here.
class KeptPasteboardItem : public PasteboardItem {
 public:
  explicit KeptPasteboardItem(PasteboardContents contents) : contents_(std::move(contents)) {}
  std::optional<PropertyList::Data> dataForType(const std::string& type) const override {
    for (const auto& [known, data] : contents_) {
      if (known == type) return data;
    }
    return std::nullopt;
  }

 private:
  PasteboardContents contents_;
};

/// A place where programs leave data for each other. Nobody but this user can read it. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  /// Drops all content. Answers the new change count.
  virtual std::int64_t clearContents() = 0;
  /// In the first item, which is made when there is none. False when it cannot be kept. Data of
  /// another type stays.
  virtual bool setData(const PropertyList::Data& data, const std::string& type) = 0;
  /// Of the first item that has the type. None when there is nothing of that type; an empty value
  /// is something.
  virtual std::optional<PropertyList::Data> dataForType(const std::string& type) const = 0;
  /// Puts each of them beside the items that are there. False when one has no type or no data, or
  /// when they cannot be kept; then none of them is there.
  virtual bool writeObjects(const std::vector<const PasteboardWriting*>& objects) = 0;
  virtual std::vector<std::shared_ptr<const PasteboardItem>> pasteboardItems() const = 0;
  /// Grows with every `clearContents`, whichever program calls it. It may begin anew with the
  /// session. 0 for a pasteboard that nobody has ever cleared.
  virtual std::int64_t changeCount() const = 0;
};

/// Main thread.
class Pasteboards {
 public:
  virtual ~Pasteboards() = default;
  /// The user's clipboard. What this program puts there stays while the program runs and no other
  /// puts something there; what another one has put there goes with the first that is written.
  virtual std::shared_ptr<Pasteboard> generalPasteboard() = 0;
  /// Signalled when the change count of the clipboard has grown, whichever program did it. May come
  /// from within a question to the clipboard.
  virtual ChangeNotice& generalPasteboardChanged() = 0;
  /// The one of that name, which every program of this user shares; made on first use. The name
  /// must not be empty.
  virtual std::shared_ptr<Pasteboard> pasteboardWithName(const std::string& name) = 0;
};

}  // namespace qb
