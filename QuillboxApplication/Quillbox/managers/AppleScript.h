#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/scripting/Script.h"

namespace qb {

/// Builds the source of a script line by line and runs it by the platform of the facade. Lines end
/// in a carriage return. Main thread.
class AppleScript {
 public:
  static std::unique_ptr<AppleScript> appleScriptWithSource(const std::string& source);
  /// Begins with an empty line. Intended.
  AppleScript() : AppleScript(std::string()) {}
  /// Ends the last line of `source`.
  explicit AppleScript(const std::string& source);

  /// Appends one line. The first argument is a format always: text of the user's goes in as an
  /// argument.
  template <class... Arguments>
  void addLine(std::string_view format, const Arguments&... arguments) {
    appendLine(stringWithFormat(format, arguments...));
  }
  const std::string& source() const { return source_; }

  /// Reads the source as it is by now; an error goes to the log. False when there is one.
  bool compile();
  /// Runs the script to its end. The source is read at the first call of this or `compile`; lines
  /// added later do not count.
  ///
  /// Answers one dictionary for both results and failure: the texts of the result under "0", "1"
  /// and so on, and the entries of the error dictionary (ScriptError.h). Each text of a list is in
  /// it twice, one after the other. Intended. An error goes to the log too.
  PropertyList execute();
  void logSource() const;

  /// Appends what `value` holds to `results`, each text under the count of what is there already.
  static void addValue(const ScriptDescriptor& value, PropertyList& toResults);

 private:
  void appendLine(std::string_view line);
  Script& script();

  std::string source_;
  /// None until it is first needed.
  std::unique_ptr<Script> script_;
};

}  // namespace qb
