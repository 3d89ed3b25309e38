#include "PlatformDesktop/session/DesktopScripts.h"

#include <string_view>

#include "QuillboxCommon/Log.h"

namespace qb {

bool DesktopScripts::executeAndReturnError(const std::string& source) {
  const std::string_view text(source);
  const auto has = [text](std::string_view part) {
    return text.find(part) != std::string_view::npos;
  };
  if (text.starts_with("tell application \"System Preferences\"")) {
    if (has("\"com.apple.preference.security\"") ||
        has("\"com.apple.preference.universalaccess\"")) {
      return application_.openPreferences("access");
    }
  }
  log("A script could not be run: " + source);
  return false;
}

}  // namespace qb
