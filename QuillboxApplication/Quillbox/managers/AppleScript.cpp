#include "Quillbox/managers/AppleScript.h"

#include <algorithm>
#include <vector>

#include "Platform/Scripts.h"
#include "Quillbox/activation/Quillbox.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

/// In units of UTF-16, as all lengths of text that are told.
std::size_t lengthOf(const std::string& text) {
  std::size_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xc0) != 0x80) length += byte >= 0xf0 ? 2 : 1;
  }
  return length;
}

/// A dictionary of texts and numbers as the log shows it, in the order of its keys.
std::string descriptionOf(const PropertyList& dictionary) {
  auto entries = dictionary.dictionaryValue();
  std::sort(entries.begin(), entries.end(),
            [](const auto& a, const auto& b) { return a.key < b.key; });
  std::string text = "{\n";
  for (const auto& [key, value] : entries) {
    text += value.isString() ? stringWithFormat("    %@ = \"%@\";\n", key, value.stringValue())
                             : stringWithFormat("    %@ = %ld;\n", key, value.longValue());
  }
  return text + "}";
}

void addText(const std::string& text, PropertyList& results) {
  results.setObject(text, stringWithFormat("%ld", results.dictionaryValue().size()));
}

}  // namespace

std::unique_ptr<AppleScript> AppleScript::appleScriptWithSource(const std::string& source) {
  return std::make_unique<AppleScript>(source);
}

AppleScript::AppleScript(const std::string& source) : source_(stringWithFormat("%@\r", source)) {}

void AppleScript::appendLine(std::string_view line) { source_ += stringWithFormat("%@\r", line); }

Script& AppleScript::script() {
  if (!script_) script_ = std::make_unique<Script>(source_);
  return *script_;
}

bool AppleScript::compile() {
  const PropertyList error = script().compileAndReturnError();
  if (!error.isNone()) log(stringWithFormat("AppleScript Error: %@", descriptionOf(error)));
  return error.isNone();
}

PropertyList AppleScript::execute() {
  const ScriptOutcome outcome = quillbox->platform().scripts().executeScript(script());
  PropertyList results = PropertyList::dictionary();
  if (outcome.descriptor) addValue(*outcome.descriptor, results);
  if (!outcome.error.isNone()) {
    for (const auto& [key, value] : outcome.error.dictionaryValue()) results.setObject(value, key);
    log(stringWithFormat("Quillbox AppleScript Error: %@", descriptionOf(outcome.error)));
  }
  return results;
}

void AppleScript::logSource() const {
  log(stringWithFormat("\rAppleScript Source:\r%@ (%ld)", source_, lengthOf(source_)));
}

void AppleScript::addValue(const ScriptDescriptor& value, PropertyList& toResults) {
  if (value.stringValue) addText(*value.stringValue, toResults);
  for (std::size_t index = 1; index <= value.numberOfItems(); ++index) {
    const ScriptDescriptor& item = value.descriptorAtIndex(index);
    if (item.stringValue) addText(*item.stringValue, toResults);
    addValue(item, toResults);
  }
}

}  // namespace qb
