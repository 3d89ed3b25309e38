#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "QuillboxCommon/scripting/ScriptHost.h"
#include "QuillboxCommon/scripting/ScriptNode.h"
#include "QuillboxCommon/scripting/ScriptValue.h"

namespace qb::scripting {

/// What one run may take. A script that wants more fails: it blocks the whole program.
struct Limits {
  std::size_t steps = 1'000'000;
  /// Of all values that are made or looked through, in bytes.
  std::size_t effort = std::size_t{256} << 20;
  int depth = 1000;
};

/// Runs one program once. Operations throw `ScriptError`.
class Evaluator {
 public:
  /// Both must outlive this.
  Evaluator(const Program& program, ScriptHost& host, const Limits& limits)
      : program_(program), host_(host), limits_(limits) {}

  /// The value of the last statement, or what the script returns.
  Value run();

 private:
  enum class Flow : std::uint8_t { Next, ExitRepeat, Return };
  /// The variables of one call.
  struct Frame {
    std::map<std::string, Value> values;
    /// Declared as belonging to this call, or to the whole script.
    std::set<std::string> locals, globals;
    Value result;
  };
  /// Counts how deep calls are nested while it lives. Throws when that is too deep.
  class DepthGuard {
   public:
    explicit DepthGuard(Evaluator& evaluator);
    ~DepthGuard() { --depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

   private:
    int& depth_;
  };
  /// Addresses commands to `target` while it lives.
  class TargetGuard {
   public:
    TargetGuard(Evaluator& evaluator, Value target);
    ~TargetGuard() { targets_.pop_back(); }
    TargetGuard(const TargetGuard&) = delete;
    TargetGuard& operator=(const TargetGuard&) = delete;

   private:
    std::vector<Value>& targets_;
  };
  class FrameGuard;

  // Statements.
  Flow execute(const StatementList& statements);
  Flow execute(const Statement& statement);
  Flow run(const Evaluate& node);
  Flow run(const Tell& node);
  Flow run(const If& node);
  Flow run(const Repeat& node);
  Flow run(const ExitRepeat&) { return Flow::ExitRepeat; }
  Flow run(const Set& node);
  Flow run(const Return& node);
  Flow run(const Declaration& node);
  Flow run(const Try& node);
  Flow run(const Raise& node);
  Flow repeatTimes(const Repeat& node);
  Flow repeatWhile(const Repeat& node);
  Flow repeatCounting(const Repeat& node);
  Flow repeatOver(const Repeat& node);
  /// One turn; Next when there may be another.
  Flow turn(const Repeat& node);
  void assign(const Expression& pattern, const Value& value);
  void assignProperty(const Property& property, const Value& value);
  void setVariable(const std::string& name, const Value& value);

  // Expressions.
  Value evaluate(const Expression& expression);
  Value valueOf(const Literal& node) { return node.value; }
  Value valueOf(const Variable& node);
  Value valueOf(SpecialName name);
  Value valueOf(const ListOf& node);
  Value valueOf(const Unary& node);
  Value valueOf(const Binary& node);
  Value valueOf(const Coercion& node);
  Value valueOf(const ApplicationNamed& node);
  Value valueOf(const Part& node);
  Value valueOf(const Property& node);
  Value valueOf(const Element& node);
  Value valueOf(const HandlerCall& node);
  Value valueOf(const Command& node);
  Value containerOf(const ExpressionPointer& container);
  Value call(const HandlerCall& node, const Handler& handler);

  // Commands.
  Value displayAlert(const Command& command);
  Value keystroke(const Command& command);
  Value keyCode(const Command& command);
  Value doShellScript(const Command& command);
  Value delay(const Command& command);
  ScriptElement elementOf(const Command& command);
  ScriptApplication applicationOf(const Command& command);
  EventFlags modifiersOf(const Command& command);
  /// What only the host knows; none for another property.
  std::optional<Value> propertyOfElement(const std::string& name, const ScriptElement& element);
  static bool isOfSystemEvents(const ScriptApplication& application);
  void requireSystemEvents(const std::string& command) const;

  std::string text(const Expression& expression);
  std::int64_t integer(const Expression& expression);
  bool condition(const Expression& expression);
  void takeStep();
  void takeEffort(std::size_t bytes);
  Value counted(Value value);
  /// Does something in the host; an error is the target's.
  template <class Call>
  auto asked(Call call) -> decltype(call());

  const Program& program_;
  ScriptHost& host_;
  Limits limits_;
  std::map<std::string, Value> globals_;
  std::vector<Frame> frames_;
  /// Whom commands are for, the innermost last; the script itself at first.
  std::vector<Value> targets_;
  std::size_t steps_ = 0, effort_ = 0;
  int depth_ = 0;
};

}  // namespace qb::scripting
