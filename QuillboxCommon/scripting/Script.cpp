#include "QuillboxCommon/scripting/Script.h"

#include <utility>

#include "QuillboxCommon/scripting/ScriptEvaluator.h"
#include "QuillboxCommon/scripting/ScriptParser.h"

namespace qb {

Script::Script(std::string source) : source_(std::move(source)) {}

Script::~Script() = default;

PropertyList Script::compileAndReturnError() {
  if (program_) return {};
  try {
    program_ = scripting::parsedProgram(source_);
  } catch (const ScriptError& error) {
    return errorDictionary(error);
  }
  return {};
}

ScriptOutcome Script::executeAndReturnError(ScriptHost& host) {
  return executeAndReturnError(host, scripting::Limits{});
}

ScriptOutcome Script::executeAndReturnError(ScriptHost& host, const scripting::Limits& limits) {
  if (auto error = compileAndReturnError(); !error.isNone()) return {std::nullopt, error};
  try {
    const scripting::Value result = scripting::Evaluator(*program_, host, limits).run();
    if (result.isNone()) return {};
    return {result.descriptor(), {}};
  } catch (const ScriptError& error) {
    return {std::nullopt, errorDictionary(error)};
  }
}

}  // namespace qb
