#pragma once

#include <string>
#include <variant>
#include <vector>

#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

/// A file that goes along, by its absolute path.
struct SharedFile {
  std::string path;
  friend bool operator==(const SharedFile&, const SharedFile&) = default;
};

using SharedItem = std::variant<AttributedString, SharedFile, Image>;

/// A message that the user is to complete and send.
struct EmailMessage {
  std::string subject;
  /// Texts make up the body, in order; lines end in "\r", "\n" or both. Files and images are
  /// attached.
  std::vector<SharedItem> items;
  friend bool operator==(const EmailMessage&, const EmailMessage&) = default;
};

/// Handing things on to the user's other programs. Main thread.
class Sharing {
 public:
  virtual ~Sharing() = default;
  /// Opens the message in the user's mail program. Does not wait for it: false when there is no
  /// such program or it cannot be started.
  virtual bool composeEmail(const EmailMessage& message) = 0;
};

}  // namespace qb
