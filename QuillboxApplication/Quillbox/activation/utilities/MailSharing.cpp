#include "Quillbox/activation/utilities/MailSharing.h"

#include "Platform/Sharing.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/Cubby.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

/// More than any clipping has: they go as they are.
constexpr Size largestImage{99999, 99999};
constexpr std::size_t longestText = 99999;

AttributedString plainText(const std::string& text) {
  AttributedString result;
  result.append(text, Font());
  return result;
}

}  // namespace

void MailSharing::shareFileViaEmail(const std::string& path) {
  const std::string name = fileNameFromFullPath(path, true);
  compose({.subject = name,
           .items = {plainText(stringWithFormat("Hi, here is a copy of %@:\r\n\r\n", name)),
                     SharedFile{path}}});
}

void MailSharing::shareTextViaEmail(const AttributedString& text) {
  if (text.string().empty()) return;
  compose({.subject = "Information",
           .items = {plainText("Hi, here is a copy of the following information: \r\r"), text}});
}

void MailSharing::shareImageViaEmail(const Image& image) {
  if (!image) return;
  compose({.subject = "Image for You",
           .items = {plainText("Hi, here is an image for you: \r\r\n\n "), image}});
}

void MailSharing::shareCubbiesViaEmail(const std::vector<std::shared_ptr<Cubby>>& cubbies) {
  if (cubbies.empty()) return;
  const bool isOne = cubbies.size() == 1;
  EmailMessage message{
      .subject = isOne ? "A Clipping for You" : "Clippings for You",
      .items = {plainText(isOne ? "Hi, here is a clipping for you: \r\r\n\n "
                                : "Hi, here are some clippings for you: \r\r\n\n ")}};
  for (const auto& cubby : cubbies) {
    if (cubby->isImage()) {
      const Image image = cubby->popUpViewImageWithMaximumSize(largestImage, 0, Color::white());
      if (image) message.items.emplace_back(image);
    }
    if (cubby->isText()) {
      if (const auto text = cubby->textContentsWithMaximumLength(longestText)) {
        message.items.emplace_back(*text);
      }
    }
  }
  compose(message);
}

void MailSharing::compose(const EmailMessage& message) {
  facade_.platform().sharing().composeEmail(message);
  facade_.dismissQuillbox();
}

}  // namespace qb
