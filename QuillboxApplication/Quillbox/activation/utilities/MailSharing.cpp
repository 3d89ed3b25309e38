#include "Quillbox/activation/utilities/MailSharing.h"

#include "Platform/Sharing.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

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

void MailSharing::compose(const EmailMessage& message) {
  facade_.platform().sharing().composeEmail(message);
  facade_.dismissQuillbox();
}

}  // namespace qb
