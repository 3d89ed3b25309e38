#include "Quillbox/activation/utilities/ReplaceQuestion.h"

#include <string_view>

#include "Quillbox/managers/AppleScript.h"

namespace qb {

namespace {

/// As it stands between double quotes in a script: a file's name must not end the text that it is
/// in, lest it go on as a script of its own.
std::string escapedForScript(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result;
}

}  // namespace

ReplaceAnswer askWhetherToReplace(const std::string& itemName) {
  AppleScript script;
  script.addLine("tell application \"Quillbox\"");
  script.addLine("set itemName to \"%@\"", escapedForScript(itemName));
  script.addLine(
      "display alert \"An item named \" & itemName & \" already exists in this location. Do you "
      "want to replace it with the one you're moving?\" buttons {\"Keep Both\", \"Stop\", "
      "\"Replace\"}");
  script.addLine("end tell");
  const std::string answer = script.execute().objectForKey("0").stringValue();
  if (answer == "Keep Both") return ReplaceAnswer::KeepBoth;
  if (answer == "Stop") return ReplaceAnswer::Stop;
  if (answer == "Replace") return ReplaceAnswer::Replace;
  return ReplaceAnswer::None;
}

}  // namespace qb
