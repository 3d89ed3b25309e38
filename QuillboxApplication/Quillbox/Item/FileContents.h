#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

class Platform;
class View;

/// What is in a file that can be shown or copied, by the kind of the file. Main thread.
class FileContents {
 public:
  explicit FileContents(Platform& platform) : platform_(platform) {}

  /// `completion` gets the picture of an image file, in all of its detail, as PNG, later than the
  /// call; no bytes when there is none, and for any other file.
  void imageContentsOfFileAtPath(const std::string& path,
                                 std::function<void(const PropertyList::Data&)> completion) const;
  /// The text of a text file; none when it cannot be read, and for any other file.
  std::optional<AttributedString> textContentsOfFileAtPath(const std::string& path) const;

  /// `completion` gets a view of at most 768 by 512 points that shows the picture of an image file
  /// or the first page of a PDF, later than the call; null when there is no picture.
  void loadPictureView(const std::string& path,
                       std::function<void(std::shared_ptr<View>)> completion) const;
  /// A view 768 points wide and as high as it takes with the first 2000 characters of a text file;
  /// null when there are none.
  std::shared_ptr<View> createTextView(const std::string& path) const;

 private:
  std::optional<AttributedString> beginningOfTextFile(const std::string& path) const;

  Platform& platform_;
};

}  // namespace qb
