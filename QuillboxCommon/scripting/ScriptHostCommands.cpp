// The part of the evaluator that asks the host for something.

#include <algorithm>
#include <utility>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/scripting/ScriptEvaluator.h"
#include "QuillboxCommon/scripting/ScriptOperators.h"

namespace qb::scripting {

namespace {

constexpr std::size_t mostButtons = 3;

/// Results have carriage returns for line ends, and none at their end.
std::string withReturns(std::string output) {
  if (output.ends_with('\n')) output.pop_back();
  std::replace(output.begin(), output.end(), '\n', '\r');
  return output;
}

ScriptAlert::Style styleNamed(const std::string& name) {
  if (name == "critical") return ScriptAlert::Style::Critical;
  return name == "warning" ? ScriptAlert::Style::Warning : ScriptAlert::Style::Informational;
}

/// A button by its number or its title.
std::size_t buttonAt(const Value& choice, const std::vector<std::string>& buttons) {
  if (const std::int64_t* const index = choice.integer()) {
    if (*index >= 1 && static_cast<std::size_t>(*index) <= buttons.size()) {
      return static_cast<std::size_t>(*index - 1);
    }
  }
  const auto found = std::find(buttons.begin(), buttons.end(), choice.coercedText().value_or(""));
  if (found == buttons.end()) failToGet("button " + choice.source());
  return static_cast<std::size_t>(found - buttons.begin());
}

}  // namespace

template <class Call>
auto Evaluator::asked(Call call) -> decltype(call()) {
  try {
    return call();
  } catch (ScriptError& error) {
    if (const ScriptElement* const target = targets_.back().element();
        target != nullptr && error.application.empty()) {
      error.application = target->application.name;
    }
    throw;
  }
}

Value Evaluator::valueOf(const Command& node) {
  switch (node.name) {
    case CommandName::Activate: {
      const ScriptApplication application = applicationOf(node);
      asked([&] { host_.activate(application); });
      return {};
    }
    case CommandName::Quit: {
      const ScriptApplication application = applicationOf(node);
      asked([&] { host_.quit(application); });
      return {};
    }
    case CommandName::MakeDocument: {
      const ScriptApplication application = applicationOf(node);
      asked([&] { host_.makeNewDocument(application); });
      return {};
    }
    case CommandName::Click: {
      requireSystemEvents("click");
      const ScriptElement element = elementOf(node);
      asked([&] { host_.click(element); });
      return Value(element);
    }
    case CommandName::Exists: {
      requireSystemEvents("exists");
      const ScriptElement element = elementOf(node);
      return Value(asked([&] { return host_.exists(element); }));
    }
    case CommandName::Reveal: {
      const ScriptElement element = elementOf(node);
      asked([&] { host_.reveal(element); });
      return Value(element);
    }
    case CommandName::AsciiCharacter: {
      const std::int64_t code = integer(*node.direct);
      if (code < 0 || code > 127) failToGet(stringWithFormat("ASCII character %ld", code));
      return Value(std::string(1, static_cast<char>(code)));
    }
    case CommandName::Count:
      return propertyOf("length", evaluate(*node.direct));
    case CommandName::Delay:
      return delay(node);
    case CommandName::DisplayAlert:
      return displayAlert(node);
    case CommandName::DoShellScript:
      return doShellScript(node);
    case CommandName::KeyCode:
      return keyCode(node);
    case CommandName::Keystroke:
      break;
  }
  return keystroke(node);
}

ScriptApplication Evaluator::applicationOf(const Command& command) {
  const Value target = command.direct ? evaluate(*command.direct) : targets_.back();
  const ScriptElement* const element = target.element();
  if (element == nullptr || !element->path.empty()) {
    throw ScriptError{ScriptErrorNotUnderstood,
                      stringWithFormat("%@ is no application.", target.source()), ""};
  }
  return element->application;
}

ScriptElement Evaluator::elementOf(const Command& command) {
  const Value value = evaluate(*command.direct);
  const ScriptElement* const element = value.element();
  if (element == nullptr || element->path.empty()) failToCoerce(value, "element");
  return *element;
}

std::optional<Value> Evaluator::propertyOfElement(const std::string& name,
                                                  const ScriptElement& element) {
  if (name == "enabled") return Value(asked([&] { return host_.isEnabled(element); }));
  const auto selection = element.path.back().selection;
  const bool isEvery = selection == ScriptElement::Selection::Every;
  if (name != "name" || !(isEvery || selection == ScriptElement::Selection::Index)) {
    return std::nullopt;
  }
  std::vector<Value> names;
  for (std::string& each : asked([&] { return host_.namesOf(element); })) {
    names.emplace_back(std::move(each));
  }
  if (!isEvery && names.size() == 1) return counted(std::move(names.front()));
  return counted(Value::list(std::move(names)));
}

bool Evaluator::isOfSystemEvents(const ScriptApplication& application) {
  return lowerCase(application.name) ==
         (application.byIdentifier ? "com.apple.systemevents" : "system events");
}

void Evaluator::requireSystemEvents(const std::string& command) const {
  const ScriptElement* const target = targets_.back().element();
  const ScriptApplication application =
      target == nullptr ? ScriptApplication{} : target->application;
  if (isOfSystemEvents(application)) return;
  throw ScriptError{ScriptErrorNotUnderstood, stringWithFormat("Can\u2019t continue %@.", command),
                    application.name};
}

EventFlags Evaluator::modifiersOf(const Command& command) {
  const auto parameter = command.parameters.find("using");
  if (parameter == command.parameters.end()) return 0;
  const Value value = coerced(evaluate(*parameter->second), ValueType::List);
  EventFlags modifiers = 0;
  for (const Value& item : value.list()->items) {
    if (item.constant() == nullptr) failToCoerce(item, "modifier");
    modifiers |= item.constant()->flag;
  }
  return modifiers;
}

Value Evaluator::keystroke(const Command& command) {
  requireSystemEvents("keystroke");
  const std::string typed = text(*command.direct);
  const EventFlags modifiers = modifiersOf(command);
  asked([&] { host_.keystroke(typed, modifiers); });
  return {};
}

Value Evaluator::keyCode(const Command& command) {
  requireSystemEvents("key code");
  const Value codes = coerced(evaluate(*command.direct), ValueType::List);
  const EventFlags modifiers = modifiersOf(command);
  for (const Value& each : codes.list()->items) {
    const auto code = each.coercedInteger();
    if (!code || *code < 0 || *code > 127) failToCoerce(each, "key code");
    asked([&] { host_.keyCode(static_cast<std::uint16_t>(*code), modifiers); });
  }
  return {};
}

Value Evaluator::doShellScript(const Command& command) {
  const std::string line = text(*command.direct);
  return counted(Value(withReturns(asked([&] { return host_.doShellScript(line); }))));
}

Value Evaluator::delay(const Command& command) {
  const Value seconds = coerced(evaluate(*command.direct), ValueType::Real);
  asked([&] { host_.delay(std::max(*seconds.real(), 0.0)); });
  return {};
}

Value Evaluator::displayAlert(const Command& command) {
  const auto parameter = [&](const char* name) {
    const auto found = command.parameters.find(name);
    return found == command.parameters.end() ? Value() : evaluate(*found->second);
  };
  ScriptAlert alert;
  alert.messageText = text(*command.direct);
  alert.informativeText = parameter("message").coercedText().value_or("");
  alert.style = styleNamed(parameter("as").coercedText().value_or(""));
  if (const Value buttons = parameter("buttons"); !buttons.isNone()) {
    const Value titles = coerced(buttons, ValueType::List);
    for (const Value& title : titles.list()->items) {
      alert.buttons.push_back(*coerced(title, ValueType::Text).text());
    }
  }
  if (alert.buttons.empty()) alert.buttons.emplace_back("OK");
  if (alert.buttons.size() > mostButtons) {
    throw ScriptError{ScriptErrorParameter, "An alert has at most three buttons.", ""};
  }
  const Value chosen = parameter("default button"), cancel = parameter("cancel button");
  alert.defaultButton =
      chosen.isNone() ? alert.buttons.size() - 1 : buttonAt(chosen, alert.buttons);
  if (!cancel.isNone()) alert.cancelButton = buttonAt(cancel, alert.buttons);

  const auto pressed = asked([&] { return host_.displayAlert(alert); });
  if (!pressed || pressed == alert.cancelButton) {
    throw ScriptError{ScriptErrorUserCanceled, "User canceled.", ""};
  }
  return Value::record({"button returned"}, {Value(alert.buttons.at(*pressed))});
}

void Evaluator::assignProperty(const Property& property, const Value& value) {
  const Value container = containerOf(property.container);
  const ScriptElement* const owner = container.element();
  const ScriptElement* const element = value.element();
  if (property.name == "current pane" && owner != nullptr && element != nullptr) {
    asked([&] { host_.reveal(*element); });
  } else if (property.name == "frontmost" && owner != nullptr && value == Value(true)) {
    // System Events itself has nothing to bring forward.
    if (owner->path.empty()) return;
    asked([&] { host_.activate({owner->path.back().selector, false}); });
  } else {
    throw ScriptError{ScriptErrorNoSuchObject,
                      stringWithFormat("Can\u2019t set %@ to %@.", property.name, value.source()),
                      ""};
  }
}

}  // namespace qb::scripting
