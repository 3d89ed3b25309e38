#pragma once

#include <memory>

#include "PlatformDesktop/graphics/DesktopGraphics.h"
#include "PlatformDesktop/graphics/IconTheme.h"
#include "PlatformDesktop/processes/ProgramWindows.h"

namespace qb {

/// Icons of applications from their desktop entry or their window, of other files from their kind.
class DesktopIcons : public IconSource {
 public:
  explicit DesktopIcons(std::shared_ptr<const ProgramWindows> windows)
      : windows_(std::move(windows)) {}
  QImage icon(const std::string& path, int pixels) override;
  bool isApplication(const std::string& path) const override;

 private:
  std::shared_ptr<const IconTheme> theme();
  QImage named(const std::string& icon, int pixels);
  QImage ofKind(const std::string& path, int pixels);

  std::shared_ptr<const ProgramWindows> windows_;
  std::once_flag once_;
  std::shared_ptr<const IconTheme> theme_;
};

}  // namespace qb
