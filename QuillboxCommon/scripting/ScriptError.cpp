#include "QuillboxCommon/scripting/ScriptError.h"

namespace qb {

PropertyList errorDictionary(const ScriptError& error) {
  const std::string& brief = error.briefMessage;
  return PropertyList::dictionary(
      {{NSAppleScriptErrorMessage,
        error.application.empty() ? brief : error.application + " got an error: " + brief},
       {NSAppleScriptErrorBriefMessage, brief},
       {NSAppleScriptErrorNumber, error.number}});
}

}  // namespace qb
