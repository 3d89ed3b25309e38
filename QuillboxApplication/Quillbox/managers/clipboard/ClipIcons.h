#pragma once

#include <map>
#include <string>

#include "Quillbox/managers/clipboard/ClipTypes.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

class ClipFolder;
class Cubby;

/// The pictures of clippings, of 128 by 128 points: a text as the beginning of a page, an image as
/// itself. Making one means reading the clipping; the first hundred or so are kept. Needs the
/// facade. Main thread.
class ClipIcons {
 public:
  /// The folder must outlive it.
  explicit ClipIcons(const ClipFolder& folder) : folder_(folder) {}

  /// Empty for a clipping that is neither text nor image.
  Image iconImageForClipFileAtPath(const std::string& path);
  /// What is kept of a file that has gone.
  void removeMetaDataForClipFileAtPath(const std::string& path) { metaDataCache_.erase(path); }

 private:
  Image makeIcon(const std::string& path) const;
  /// With no clipping, there is nothing but the sheet.
  static Image iconOfText(const Cubby* cubby);
  static Image iconOfImage(const Cubby* cubby);

  const ClipFolder& folder_;
  std::map<std::string, Image> metaDataCache_;
};

}  // namespace qb
