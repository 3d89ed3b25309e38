// Feeds arbitrary bytes to the reader and runner of scripts, over a world that does whatever it is
// asked. Nothing may crash, hang or take memory without bounds, and a failure has to be told whole.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "QuillboxCommon/scripting/Script.h"
#include "QuillboxCommon/scripting/ScriptEvaluator.h"

namespace {

class ObligingHost : public qb::ScriptHost {
 public:
  void activate(const qb::ScriptApplication&) override {}
  void quit(const qb::ScriptApplication&) override {}
  void makeNewDocument(const qb::ScriptApplication&) override {}
  void keystroke(const std::string&, qb::EventFlags) override {}
  void keyCode(std::uint16_t, qb::EventFlags) override {}
  void click(const qb::ScriptElement& element) override { require(!element.path.empty()); }
  bool exists(const qb::ScriptElement& element) override {
    require(!element.path.empty());
    return element.path.size() > 1;
  }
  bool isEnabled(const qb::ScriptElement& element) override {
    require(!element.path.empty());
    return element.path.size() > 2;
  }
  std::vector<std::string> namesOf(const qb::ScriptElement& element) override {
    require(!element.path.empty());
    return std::vector<std::string>(element.path.size(), element.path.back().elementClass);
  }
  void reveal(const qb::ScriptElement& element) override { require(!element.path.empty()); }
  std::string doShellScript(const std::string& command) override { return command; }
  std::optional<std::size_t> displayAlert(const qb::ScriptAlert& alert) override {
    require(!alert.buttons.empty() && alert.defaultButton < alert.buttons.size());
    return alert.defaultButton;
  }
  void delay(double seconds) override { require(seconds >= 0); }

  static void require(bool condition) {
    if (!condition) std::abort();
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ObligingHost host;
  qb::Script script(std::string(reinterpret_cast<const char*>(data), size));
  const qb::scripting::Limits limits{20'000, std::size_t{1} << 22, 400};
  const qb::ScriptOutcome outcome = script.executeAndReturnError(host, limits);
  if (outcome.succeeded()) return 0;
  for (const char* key : {qb::NSAppleScriptErrorBriefMessage, qb::NSAppleScriptErrorMessage,
                          qb::NSAppleScriptErrorNumber}) {
    ObligingHost::require(outcome.error.hasKey(key));
  }
  return 0;
}
