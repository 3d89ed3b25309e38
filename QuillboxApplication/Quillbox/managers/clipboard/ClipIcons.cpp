#include "Quillbox/managers/clipboard/ClipIcons.h"

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/Cubby.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/managers/clipboard/ClipFolder.h"
#include "QuillboxCommon/Color.h"

namespace qb {

namespace {

constexpr double iconEdge = 128;
constexpr double imageEdge = 112;
/// From the edges of the sheet to its text.
constexpr double textInset = 12;
constexpr double textEdge = iconEdge - 2 * textInset;
constexpr std::size_t lengthOfText = 100;
/// Intended: looked at before one is added, so that there can be one more.
constexpr std::size_t mostIconsBeforeOneIsKept = 100;

}  // namespace

Image ClipIcons::iconImageForClipFileAtPath(const std::string& path) {
  const auto known = metaDataCache_.find(path);
  if (known != metaDataCache_.end()) return known->second;
  Image icon = makeIcon(path);
  if (icon && metaDataCache_.size() <= mostIconsBeforeOneIsKept) metaDataCache_[path] = icon;
  return icon;
}

Image ClipIcons::makeIcon(const std::string& path) const {
  const auto cubby = folder_.createCubbyFromClipFileAtPath(path);
  switch (ClipFolder::clipTypeFromFilePath(path)) {
    case ClipTypeText:
      return iconOfText(cubby.get());
    case ClipTypeImage:
      return iconOfImage(cubby.get());
    case ClipTypeUnknown:
      break;
  }
  return {};
}

Image ClipIcons::iconOfImage(const Cubby* cubby) {
  Image image;
  if (cubby != nullptr) {
    image = cubby->popUpViewImageWithMaximumSize({imageEdge, imageEdge}, 0, Color::white());
  }
  const Size size{iconEdge, iconEdge};
  return quillbox->platform().graphics().imageWithSize(size, [image, size](Canvas& canvas) {
    ImageManager::setIconShadow(canvas);
    const Size drawn = image.size();
    canvas.drawImage(
        image, {{size.width / 2 - drawn.width / 2, size.height / 2 - drawn.height / 2}, drawn});
  });
}

Image ClipIcons::iconOfText(const Cubby* cubby) {
  Image text;
  if (cubby != nullptr) {
    text = cubby->popUpViewImageWithMaximumSize({textEdge, textEdge}, lengthOfText, Color::clear());
  }
  return quillbox->imageManager().compositedImageOfImage(
      quillbox->imageNamed("TextClippingIcon"), text,
      {textInset, iconEdge - text.size().height - textInset});
}

}  // namespace qb
