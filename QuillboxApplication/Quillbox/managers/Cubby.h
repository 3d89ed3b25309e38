#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Pasteboards.h"
#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

/// A clipping: what was on a pasteboard, in the one type that is kept of it, byte for byte. Needs
/// the facade wherever images or the clipboard come in. Main thread.
class Cubby : public PasteboardWriting {
 public:
  using Data = PropertyList::Data;

  /// The best of all that the item has: text before images, rich before plain. Null when it has
  /// none of `allTypes`. What is there with no bytes counts.
  static std::shared_ptr<Cubby> cubbyWithPasteboardItem(const PasteboardItem& item);
  static std::shared_ptr<Cubby> textCubbyWithPasteboardItem(const PasteboardItem& item);
  static std::shared_ptr<Cubby> imageCubbyWithPasteboardItem(const PasteboardItem& item);
  /// The first of these types that the item has data of.
  static std::shared_ptr<Cubby> cubbyWithPasteboardItem(const PasteboardItem& item,
                                                        const std::vector<std::string>& withTypes);

  Cubby(std::string type, Data data);
  /// What `state` has given. What is missing is empty.
  explicit Cubby(const PropertyList& savedState);
  /// A PNG file of the image; no bytes for an empty one.
  explicit Cubby(const Image& image);
  /// Always flattened RTFD.
  explicit Cubby(const AttributedString& text);

  /// The types that are kept, the best first.
  static const std::vector<std::string>& textTypes();
  static const std::vector<std::string>& imageTypes();
  /// Those of texts and then those of images.
  static std::vector<std::string> allTypes();

  const std::string& type() const { return type_; }
  void setType(std::string type) { type_ = std::move(type); }
  const Data& data() const { return data_; }
  void setData(Data data) { data_ = std::move(data); }
  PropertyList state() const;

  bool isRTFD() const;
  bool isRTF() const;
  bool isText() const;
  bool isImage() const;

  /// The first so many characters, with their looks where the type has any. None when it is no
  /// text, has no bytes, or they cannot be read. Intended: all plain text is read as UTF-8,
  /// whatever its type says.
  std::optional<AttributedString> textContentsWithMaximumLength(std::size_t maximumLength) const;
  /// Whatever the type. Empty when there is none in the bytes.
  Image imageContents() const;
  /// The beginning of the text on a page as wide as the size, all of it, or the image; shrunk to
  /// the size as a whole. What cannot be shown has a picture of its own, so there always is one.
  Image popUpViewImageWithMaximumSize(Size maximumSize, std::size_t maximumLength,
                                      const Color& backgroundColor) const;
  void log() const;

  // Each answers whether it has worked.
  /// It alone is on the clipboard then.
  bool copyToClipboard() const;
  bool addToClipboard() const;
  bool copyToPasteboard(Pasteboard& pasteboard) const;
  /// As one more item.
  bool addToPasteboard(Pasteboard& pasteboard) const;

  std::vector<std::string> writableTypesForPasteboard(const Pasteboard& pasteboard) const override;
  std::uint32_t writingOptionsForType(const std::string& type,
                                      const Pasteboard& pasteboard) const override;
  /// The bytes, whatever type is asked for.
  PropertyList pasteboardPropertyListForType(const std::string& type) const override;

 private:
  std::string_view bytes() const;
  /// Empty when it is no text, or too little to be seen.
  Image textPreview(Size maximumSize, std::size_t maximumLength,
                    const Color& backgroundColor) const;

  std::string type_;
  Data data_;
};

}  // namespace qb
