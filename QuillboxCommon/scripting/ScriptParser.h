#pragma once

#include <memory>
#include <string_view>

#include "QuillboxCommon/scripting/ScriptNode.h"

namespace qb::scripting {

/// Reads a whole script. Throws `ScriptError`.
std::unique_ptr<const Program> parsedProgram(std::string_view source);

}  // namespace qb::scripting
