#include "Quillbox/activation/utilities/ScriptFiles.h"

#include <string_view>

#include "Platform/FileSystem.h"
#include "Platform/Scripts.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/AppleScript.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

constexpr TimeInterval executionDelay = 0.33;
/// What the bytes of a compiled script begin with.
constexpr std::string_view compiledMark = "FasdUAS";
constexpr const char* pasteScript =
    "tell application \"System Events\" to key code 9 using command down\r";

}  // namespace

void ScriptFiles::executeAppleScriptAtPath(const std::string& path) const {
  executeBlockAfterDelay(
      [this, expected = quillbox, path] {
        if (quillbox == expected) loadAndExecute(path);
      },
      executionDelay);
}

void ScriptFiles::loadAndExecute(const std::string& path) const {
  const auto source = platform_.fileSystem().stringWithContentsOfFile(path);
  if (!source) {
    log(stringWithFormat("The script %@ cannot be read", path));
  } else if (source->starts_with(compiledMark)) {
    log(stringWithFormat("The script %@ is compiled: only scripts in plain text can be run", path));
  } else {
    AppleScript(*source).execute();
  }
}

void ScriptFiles::invokePasteCommand() const {
  platform_.scripts().executeAndReturnError(pasteScript);
}

}  // namespace qb
