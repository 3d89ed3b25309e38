#include "Quillbox/Item/FileContents.h"

#include <utility>

#include "Platform/FileSystem.h"
#include "Platform/Graphics.h"
#include "Platform/Platform.h"
#include "Quillbox/activation/utilities/FileKinds.h"
#include "Quillbox/managers/ImageManager.h"
#include "QuillboxCommon/Utf8.h"
#include "QuillboxCommon/richtext/RichText.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "QuillboxCommon/views/TextView.h"

namespace qb {

namespace {

constexpr Size largestPicture{768, 512};
constexpr double pageCornerRadius = 5;
constexpr std::size_t mostCharacters = 2000;
constexpr std::size_t longestCharacter = 4;
constexpr Font plainTextFont{12};
/// Where a folder that users take for one file has its text.
constexpr const char* textInFolder = "/TXT.rtf";

/// A page is paper, whatever lies behind it.
class PageView : public RoundedRectangleView {
 public:
  explicit PageView(const std::shared_ptr<ImageView>& picture)
      : RoundedRectangleView(picture->bounds()), picture_(picture) {
    setBackgroundColor(Color::white());
    setCornerRadius(pageCornerRadius);
    addSubview(picture);
  }
  void setFrame(const Rect& frame) override {
    RoundedRectangleView::setFrame(frame);
    picture_->setFrame(bounds());
  }

 private:
  std::shared_ptr<ImageView> picture_;
};

std::optional<AttributedString> plainText(const std::string& bytes) {
  if (!isUtf8(bytes)) return std::nullopt;
  AttributedString text;
  text.append(bytes, plainTextFont);
  return text;
}

}  // namespace

void FileContents::imageContentsOfFileAtPath(
    const std::string& path, std::function<void(const PropertyList::Data&)> completion) const {
  if (FileKinds::fileAtPathIsImageFile(path)) {
    platform_.graphics().loadPNGDataOfFile(path, std::move(completion));
  } else {
    executeBlockAfterDelay([completion = std::move(completion)] { completion({}); }, 0);
  }
}

std::optional<AttributedString> FileContents::textContentsOfFileAtPath(
    const std::string& path) const {
  if (!FileKinds::fileAtPathIsTextFile(path)) return std::nullopt;
  const FileSystem& files = platform_.fileSystem();
  const std::string type = FileKinds::fileTypeDescriptorForFileAtPath(path);
  auto bytes = files.stringWithContentsOfFile(path);
  if (type == "com.apple.flat-rtfd") {
    if (bytes) return attributedStringWithRTFD(*bytes);
    bytes = files.stringWithContentsOfFile(path + textInFolder);
    return bytes ? attributedStringWithRTF(*bytes) : std::nullopt;
  }
  if (!bytes) return std::nullopt;
  return type == "public.rtf" ? attributedStringWithRTF(*bytes) : plainText(*bytes);
}

void FileContents::loadPictureView(const std::string& path,
                                   std::function<void(std::shared_ptr<View>)> completion) const {
  const bool isPage = FileKinds::fileAtPathIsPDFFile(path);
  platform_.graphics().loadImageOfFile(
      path, largestPicture, [isPage, completion = std::move(completion)](const Image& loaded) {
        if (!loaded) return completion(nullptr);
        Image image = loaded;
        ImageManager::scaleImage(image, largestPicture, false);
        const auto picture = std::make_shared<ImageView>(Rect{{0, 0}, image.size()});
        picture->setImage(image);
        completion(isPage ? std::make_shared<PageView>(picture) : std::shared_ptr<View>(picture));
      });
}

std::optional<AttributedString> FileContents::beginningOfTextFile(const std::string& path) const {
  const std::string type = FileKinds::fileTypeDescriptorForFileAtPath(path);
  if (type != "public.utf8-plain-text") return textContentsOfFileAtPath(path);
  // Of a long text the rest need not even be read.
  const auto bytes =
      platform_.fileSystem().stringWithBeginningOfFile(path, mostCharacters * longestCharacter);
  if (!bytes) return std::nullopt;
  return plainText(std::string(firstCharacters(*bytes, mostCharacters)));
}

std::shared_ptr<View> FileContents::createTextView(const std::string& path) const {
  const auto text = beginningOfTextFile(path);
  if (!text) return nullptr;
  auto view =
      std::make_shared<TextView>(platform_.graphics(), Rect::make(0, 0, largestPicture.width, 0));
  view->setText(text->attributedSubstringFromRange(0, mostCharacters));
  view->setFrameSize({largestPicture.width, view->naturalHeight()});
  return view->frame().isEmpty() ? nullptr : view;
}

}  // namespace qb
