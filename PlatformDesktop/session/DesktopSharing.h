#pragma once

#include <optional>
#include <string>

#include "Platform/Sharing.h"
#include "PlatformDesktop/processes/ApplicationCatalogue.h"
#include "PlatformDesktop/session/MailDraft.h"

namespace qb {

/// Messages in the program that opens mail addresses. Images go as PNG files, kept for a day in a
/// folder of this user's own, since a mail program reads them only when the message is sent.
class DesktopSharing : public Sharing {
 public:
  /// `catalogue` must outlive it; `folder` is where images are kept.
  explicit DesktopSharing(const ApplicationCatalogue& catalogue,
                          std::string folder = folderForImages());

  bool composeEmail(const EmailMessage& message) override;

  /// By the environment.
  static std::string folderForImages();

 private:
  std::optional<MailDraft> draftOf(const EmailMessage& message) const;
  /// The path of the new file; none when it cannot be written.
  std::optional<std::string> writeImage(const Image& image) const;
  void removeOldImages() const;

  const ApplicationCatalogue& catalogue_;
  std::string folder_;
};

}  // namespace qb
