#include "PlatformDesktop/input/DesktopAccessibility.h"

#include <cstdlib>

namespace qb {

bool DesktopAccessibility::isProcessTrusted() const {
  if (std::getenv("QUILLBOX_NO_INPUT_ACCESS")) return false;
  return !isAllowed_ || isAllowed_();
}

}  // namespace qb
