#include "QuillboxCommon/scripting/ScriptParser.h"

#include <initializer_list>
#include <string>
#include <utility>

#include "QuillboxCommon/scripting/ScriptExpressions.h"
#include "QuillboxCommon/scripting/ScriptTokens.h"

namespace qb::scripting {

namespace {

/// Longer ones are no work of hands.
constexpr std::size_t longestSource = std::size_t{1} << 20;

class Parser {
 public:
  explicit Parser(std::string_view source) : tokens_(tokensOf(source)), expressions_(tokens_) {}

  std::unique_ptr<const Program> program() {
    for (skipEmptyLines(); !tokens_.isEnd(); skipEmptyLines()) {
      if (tokens_.isWord("on") || tokens_.isWord("to")) {
        handler();
      } else if (tokens_.acceptWord("property")) {
        property();
      } else {
        program_->body.push_back(statement());
        tokens_.expectLineEnd();
      }
    }
    return std::move(program_);
  }

 private:
  void skipEmptyLines() {
    while (tokens_.isLineEnd()) tokens_.skip(1);
  }

  void handler() {
    tokens_.skip(1);
    const std::string name = tokens_.expectName();
    Handler handler;
    if (tokens_.acceptSymbol("(")) handler.parameters = handlerParameters();
    tokens_.expectLineEnd();
    handler.body = body();
    tokens_.expectWord("end");
    if (tokens_.isName() && tokens_.peek().word == name) tokens_.skip(1);
    tokens_.expectLineEnd();
    if (!program_->handlers.emplace(name, std::move(handler)).second) {
      throw ScriptError{ScriptErrorSyntax, "The handler " + name + " is there twice.", ""};
    }
  }
  std::vector<std::string> handlerParameters() {
    std::vector<std::string> names;
    while (!tokens_.acceptSymbol(")")) {
      if (!names.empty()) tokens_.expectSymbol(",");
      names.push_back(tokens_.expectName());
    }
    return names;
  }

  void property() {
    std::string name = tokens_.expectName();
    tokens_.expectSymbol(":");
    program_->properties.emplace_back(std::move(name), expressions_.expression());
    tokens_.expectLineEnd();
  }

  /// The statements up to the word that ends or divides the block.
  StatementList body() {
    StatementList statements;
    for (skipEmptyLines(); !tokens_.isWord("end") && !tokens_.isWord("else") && !isOnError();
         skipEmptyLines()) {
      statements.push_back(statement());
      tokens_.expectLineEnd();
    }
    return statements;
  }
  bool isOnError() const { return tokens_.areWords({"on", "error"}); }
  void end(std::string_view word) {
    tokens_.expectWord("end");
    if (!tokens_.isLineEnd()) tokens_.expectWord(word);
  }

  StatementPointer statement() {
    const NestingGuard guard(nesting_);
    if (tokens_.acceptWord("tell")) return tell();
    if (tokens_.acceptWord("if")) return conditional();
    if (tokens_.acceptWord("repeat")) return repeat();
    if (tokens_.acceptWord("set")) return set();
    if (tokens_.acceptWord("copy")) return copy();
    if (tokens_.acceptWord("return")) return makeStatement(Return{optionalExpression()});
    if (tokens_.acceptWord("local")) return declaration(false);
    if (tokens_.acceptWord("global")) return declaration(true);
    if (tokens_.acceptWord("try")) return tryStatement();
    if (tokens_.acceptWord("error")) return raise();
    if (tokens_.acceptWords({"exit", "repeat"})) return makeStatement(ExitRepeat{});
    return makeStatement(Evaluate{expressions_.expression()});
  }
  static StatementPointer makeStatement(decltype(Statement::node) node) {
    return std::make_unique<Statement>(Statement{std::move(node)});
  }
  ExpressionPointer optionalExpression() {
    const bool isThere = !tokens_.isLineEnd() && !tokens_.isWord("else");
    return isThere ? expressions_.expression() : nullptr;
  }

  StatementPointer tell() {
    Tell tell;
    tell.target = expressions_.target();
    expressions_.setTellDepth(expressions_.tellDepth() + 1);
    if (tokens_.acceptWord("to")) {
      tell.body.push_back(statement());
    } else {
      tokens_.expectLineEnd();
      tell.body = body();
      end("tell");
    }
    expressions_.setTellDepth(expressions_.tellDepth() - 1);
    return makeStatement(std::move(tell));
  }

  StatementPointer conditional() {
    If conditional;
    addBranch(conditional);
    if (tokens_.isLineEnd()) {
      tokens_.skip(1);
      conditional.branches.back().body = body();
      while (tokens_.acceptWord("else")) {
        if (tokens_.acceptWord("if")) {
          addBranch(conditional);
          tokens_.expectLineEnd();
          conditional.branches.back().body = body();
          continue;
        }
        tokens_.expectLineEnd();
        conditional.otherwise = body();
        break;
      }
      end("if");
    } else {
      conditional.branches.back().body.push_back(statement());
      if (tokens_.acceptWord("else")) conditional.otherwise.push_back(statement());
    }
    return makeStatement(std::move(conditional));
  }
  void addBranch(If& conditional) {
    conditional.branches.push_back({expressions_.expression(), {}});
    tokens_.expectWord("then");
  }

  StatementPointer repeat() {
    Repeat repeat;
    if (tokens_.acceptWord("while")) {
      repeat.kind = Repeat::Kind::While;
      repeat.first = expressions_.expression();
    } else if (tokens_.acceptWord("until")) {
      repeat.kind = Repeat::Kind::Until;
      repeat.first = expressions_.expression();
    } else if (tokens_.acceptWord("with")) {
      repeatWith(repeat);
    } else if (!tokens_.isLineEnd()) {
      repeat.kind = Repeat::Kind::Times;
      repeat.first = expressions_.expression();
      tokens_.expectWord("times");
    }
    tokens_.expectLineEnd();
    repeat.body = body();
    end("repeat");
    return makeStatement(std::move(repeat));
  }
  void repeatWith(Repeat& repeat) {
    repeat.variable = tokens_.expectName();
    if (tokens_.acceptWord("in")) {
      repeat.kind = Repeat::Kind::Over;
      repeat.first = expressions_.expression();
      return;
    }
    repeat.kind = Repeat::Kind::Counting;
    tokens_.expectWord("from");
    repeat.first = expressions_.expression();
    tokens_.expectWord("to");
    repeat.last = expressions_.expression();
    if (tokens_.acceptWord("by")) repeat.step = expressions_.expression();
  }

  StatementPointer set() {
    Set set;
    set.pattern = pattern();
    tokens_.expectWord("to");
    set.value = expressions_.expression();
    return makeStatement(std::move(set));
  }
  StatementPointer copy() {
    Set set;
    set.value = expressions_.expression();
    tokens_.expectWord("to");
    set.pattern = pattern();
    return makeStatement(std::move(set));
  }
  ExpressionPointer pattern() {
    ExpressionPointer pattern = expressions_.target();
    requirePattern(*pattern);
    return pattern;
  }
  void requirePattern(const Expression& pattern) {
    if (const auto* list = std::get_if<ListOf>(&pattern.node)) {
      for (const auto& item : list->items) requirePattern(*item);
    } else if (!std::holds_alternative<Variable>(pattern.node) &&
               !std::holds_alternative<Property>(pattern.node)) {
      tokens_.failExpecting("variable name");
    }
  }

  StatementPointer declaration(bool isGlobal) {
    Declaration declaration{isGlobal, {}};
    do {
      declaration.names.push_back(tokens_.expectName());
    } while (tokens_.acceptSymbol(","));
    return makeStatement(std::move(declaration));
  }

  StatementPointer tryStatement() {
    Try attempt;
    tokens_.expectLineEnd();
    attempt.body = body();
    if (tokens_.acceptWords({"on", "error"})) {
      if (!tokens_.isLineEnd() && !tokens_.isWord("number")) {
        attempt.message = tokens_.expectName();
      }
      if (tokens_.acceptWord("number")) attempt.number = tokens_.expectName();
      tokens_.expectLineEnd();
      attempt.onError = body();
    }
    end("try");
    return makeStatement(std::move(attempt));
  }

  StatementPointer raise() {
    Raise raise;
    if (!tokens_.isWord("number")) raise.message = optionalExpression();
    if (tokens_.acceptWord("number")) raise.number = expressions_.expression();
    return makeStatement(std::move(raise));
  }

  TokenReader tokens_;
  ExpressionParser expressions_;
  std::unique_ptr<Program> program_ = std::make_unique<Program>();
  int nesting_ = 0;
};

}  // namespace

std::unique_ptr<const Program> parsedProgram(std::string_view source) {
  if (source.size() > longestSource) {
    throw ScriptError{ScriptErrorOutOfMemory, "The script is too long.", ""};
  }
  return Parser(source).program();
}

}  // namespace qb::scripting
