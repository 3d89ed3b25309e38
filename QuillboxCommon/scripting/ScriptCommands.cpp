// The part of the expression parser that reads commands.

#include <utility>

#include "QuillboxCommon/scripting/ScriptExpressions.h"

namespace qb::scripting {

ExpressionPointer ExpressionParser::command() {
  if (tokens_.acceptWords({"do", "shell", "script"})) {
    return withDirect(CommandName::DoShellScript, directParameter());
  }
  if (tokens_.acceptWords({"display", "alert"})) return displayAlert();
  if (tokens_.acceptWords({"ascii", "character"})) {
    return withDirect(CommandName::AsciiCharacter, selector());
  }
  if (tokens_.acceptWord("delay")) return withDirect(CommandName::Delay, directParameter());
  if (tokens_.acceptWord("count")) {
    tokens_.acceptWord("of");
    return withDirect(CommandName::Count, postfix());
  }
  for (const auto& [name, command] :
       {std::pair{"activate", CommandName::Activate}, std::pair{"quit", CommandName::Quit}}) {
    if (!tokens_.acceptWord(name)) continue;
    return withDirect(command, startsExpression() ? directParameter() : nullptr);
  }
  return tellDepth_ > 0 ? applicationCommand() : nullptr;
}

ExpressionPointer ExpressionParser::applicationCommand() {
  if (tokens_.acceptWord("keystroke")) return keyCommand(CommandName::Keystroke);
  if (tokens_.acceptWords({"key", "code"})) return keyCommand(CommandName::KeyCode);
  if (tokens_.acceptWord("click")) return withDirect(CommandName::Click, directParameter());
  if (tokens_.acceptWord("exists")) return withDirect(CommandName::Exists, directParameter());
  if (tokens_.acceptWord("reveal")) return withDirect(CommandName::Reveal, directParameter());
  if (tokens_.acceptWords({"make", "new", "document"})) {
    tokens_.acceptWords({"at", "the", "beginning", "of", "documents"});
    return withDirect(CommandName::MakeDocument, nullptr);
  }
  return nullptr;
}

ExpressionPointer ExpressionParser::keyCommand(CommandName name) {
  Command command{name, directParameter(), {}};
  if (tokens_.acceptWord("using")) command.parameters["using"] = directParameter();
  return makeExpression(std::move(command));
}

ExpressionPointer ExpressionParser::displayAlert() {
  Command command{CommandName::DisplayAlert, directParameter(), {}};
  for (;;) {
    if (tokens_.acceptWord("as")) {
      const bool isKnown = tokens_.isWord("critical") || tokens_.isWord("warning") ||
                           tokens_.isWord("informational");
      if (!isKnown) tokens_.failExpecting("\u201ccritical\u201d");
      command.parameters["as"] = makeExpression(Literal{Value(tokens_.next().word)});
    } else if (tokens_.acceptWord("message")) {
      command.parameters["message"] = directParameter();
    } else if (tokens_.acceptWord("buttons")) {
      command.parameters["buttons"] = directParameter();
    } else if (tokens_.acceptWords({"default", "button"})) {
      command.parameters["default button"] = directParameter();
    } else if (tokens_.acceptWords({"cancel", "button"})) {
      command.parameters["cancel button"] = directParameter();
    } else {
      return makeExpression(std::move(command));
    }
  }
}

ExpressionPointer ExpressionParser::withDirect(CommandName name, ExpressionPointer direct) {
  return makeExpression(Command{name, std::move(direct), {}});
}

bool ExpressionParser::startsExpression() const {
  return !tokens_.isLineEnd() && !tokens_.isEnd() && !tokens_.isWord("else") &&
         !tokens_.isSymbol(")") && !tokens_.isSymbol(",") && !tokens_.isSymbol("}");
}

}  // namespace qb::scripting
