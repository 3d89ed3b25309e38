#include "PlatformDesktop/session/DesktopScripts.h"

#include <string_view>

#include "QuillboxCommon/Log.h"

namespace qb {

ScriptOutcome DesktopScripts::executeScript(Script& script) {
  const std::string_view text(script.source());
  const auto has = [text](std::string_view part) {
    return text.find(part) != std::string_view::npos;
  };
  if (text.starts_with("tell application \"System Preferences\"")) {
    if (has("\"com.apple.preference.security\"") ||
        has("\"com.apple.preference.universalaccess\"")) {
      application_.openPreferences("access");
      return {};
    }
  }
  log("A script could not be run: " + script.source());
  return {std::nullopt, errorDictionary({ScriptErrorNotUnderstood, "Can\u2019t run it.", ""})};
}

}  // namespace qb
