#pragma once

#include <cstdint>
#include <string>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// The numbers that scripts and their callers know failures by.
enum ScriptErrorNumber : std::int32_t {
  ScriptErrorOutOfMemory = -108,
  ScriptErrorUserCanceled = -128,
  ScriptErrorCannotCoerce = -1700,
  ScriptErrorParameter = -1704,
  ScriptErrorNotUnderstood = -1708,
  ScriptErrorTimeout = -1712,
  ScriptErrorNoSuchObject = -1728,
  ScriptErrorGeneral = -2700,
  ScriptErrorDivideByZero = -2701,
  ScriptErrorStackOverflow = -2706,
  ScriptErrorSyntax = -2741,
  ScriptErrorUndefinedVariable = -2753,
  ScriptErrorHandlerFailed = -10000,
  ScriptErrorNoAssistiveAccess = -25211,
};

/// Why a script cannot be compiled, or where it stopped. Thrown by what a script is made of and by
/// its host; a script's maker and runner see it as a value only (Script.h).
struct ScriptError {
  std::int32_t number = ScriptErrorGeneral;
  /// One sentence.
  std::string briefMessage;
  /// The application that reported it; empty when the script itself failed.
  std::string application;

  friend bool operator==(const ScriptError&, const ScriptError&) = default;
};

/// The keys of an error dictionary. The first two hold strings, the second of which begins with the
/// application that reported the error; the third holds a number.
inline constexpr const char* NSAppleScriptErrorBriefMessage = "NSAppleScriptErrorBriefMessage";
inline constexpr const char* NSAppleScriptErrorMessage = "NSAppleScriptErrorMessage";
inline constexpr const char* NSAppleScriptErrorNumber = "NSAppleScriptErrorNumber";

/// `error` as callers get it.
PropertyList errorDictionary(const ScriptError& error);

}  // namespace qb
