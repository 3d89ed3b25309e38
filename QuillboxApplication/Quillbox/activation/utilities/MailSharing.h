#pragma once

#include <memory>
#include <string>
#include <vector>

#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

class Cubby;
class Quillbox;
struct EmailMessage;

/// Messages in the user's mail program, ready to be addressed. The panel goes whether or not that
/// worked. Main thread.
class MailSharing {
 public:
  explicit MailSharing(Quillbox& facade) : facade_(facade) {}

  void shareFileViaEmail(const std::string& path);
  /// Nothing for an empty text.
  void shareTextViaEmail(const AttributedString& text);
  /// Nothing for an empty image.
  void shareImageViaEmail(const Image& image);
  /// In one message. Nothing without any; one that cannot be shown is left out.
  void shareCubbiesViaEmail(const std::vector<std::shared_ptr<Cubby>>& cubbies);

 private:
  void compose(const EmailMessage& message);

  Quillbox& facade_;
};

}  // namespace qb
