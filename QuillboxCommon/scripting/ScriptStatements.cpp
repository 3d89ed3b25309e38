// The part of the evaluator that runs statements.

#include <utility>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/scripting/ScriptEvaluator.h"
#include "QuillboxCommon/scripting/ScriptOperators.h"

namespace qb::scripting {

Evaluator::Flow Evaluator::execute(const StatementList& statements) {
  for (const StatementPointer& statement : statements) {
    if (const Flow flow = execute(*statement); flow != Flow::Next) return flow;
  }
  return Flow::Next;
}

Evaluator::Flow Evaluator::execute(const Statement& statement) {
  takeStep();
  const DepthGuard guard(*this);
  return std::visit([this](const auto& node) { return run(node); }, statement.node);
}

Evaluator::Flow Evaluator::run(const Evaluate& node) {
  Value value = evaluate(*node.expression);
  frames_.back().result = std::move(value);
  return Flow::Next;
}

Evaluator::Flow Evaluator::run(const Tell& node) {
  Value target = evaluate(*node.target);
  if (target.element() == nullptr && !target.isMe()) {
    throw ScriptError{ScriptErrorNotUnderstood,
                      stringWithFormat("%@ takes no commands.", target.source()), ""};
  }
  const TargetGuard guard(*this, std::move(target));
  return execute(node.body);
}

Evaluator::Flow Evaluator::run(const If& node) {
  for (const If::Branch& branch : node.branches) {
    if (condition(*branch.condition)) return execute(branch.body);
  }
  return execute(node.otherwise);
}

Evaluator::Flow Evaluator::run(const Repeat& node) {
  switch (node.kind) {
    case Repeat::Kind::Times:
      return repeatTimes(node);
    case Repeat::Kind::Counting:
      return repeatCounting(node);
    case Repeat::Kind::Over:
      return repeatOver(node);
    default:
      return repeatWhile(node);
  }
}

Evaluator::Flow Evaluator::turn(const Repeat& node) {
  takeStep();
  return execute(node.body);
}

Evaluator::Flow Evaluator::repeatTimes(const Repeat& node) {
  for (std::int64_t count = integer(*node.first); count > 0; --count) {
    if (const Flow flow = turn(node); flow != Flow::Next) {
      return flow == Flow::ExitRepeat ? Flow::Next : flow;
    }
  }
  return Flow::Next;
}

Evaluator::Flow Evaluator::repeatWhile(const Repeat& node) {
  const bool goal = node.kind == Repeat::Kind::While;
  while (node.first == nullptr || condition(*node.first) == goal) {
    if (const Flow flow = turn(node); flow != Flow::Next) {
      return flow == Flow::ExitRepeat ? Flow::Next : flow;
    }
  }
  return Flow::Next;
}

Evaluator::Flow Evaluator::repeatCounting(const Repeat& node) {
  const std::int64_t first = integer(*node.first);
  const std::int64_t last = integer(*node.last);
  const std::int64_t step = node.step ? integer(*node.step) : 1;
  if (step == 0) throw ScriptError{ScriptErrorParameter, "Can\u2019t repeat by 0.", ""};
  // As reals: at the ends of their range integers would wrap.
  for (double count = static_cast<double>(first);
       step > 0 ? count <= static_cast<double>(last) : count >= static_cast<double>(last);
       count += static_cast<double>(step)) {
    setVariable(node.variable, applied(BinaryOperator::Div, Value(count), Value(1.0)));
    if (const Flow flow = turn(node); flow != Flow::Next) {
      return flow == Flow::ExitRepeat ? Flow::Next : flow;
    }
  }
  return Flow::Next;
}

Evaluator::Flow Evaluator::repeatOver(const Repeat& node) {
  // Held for as long as it is gone through, whatever happens to the variable that it came from.
  const Value list = coerced(evaluate(*node.first), ValueType::List);
  for (const Value& item : list.list()->items) {
    setVariable(node.variable, item);
    if (const Flow flow = turn(node); flow != Flow::Next) {
      return flow == Flow::ExitRepeat ? Flow::Next : flow;
    }
  }
  return Flow::Next;
}

Evaluator::Flow Evaluator::run(const Set& node) {
  const Value value = evaluate(*node.value);
  assign(*node.pattern, value);
  frames_.back().result = value;
  return Flow::Next;
}

void Evaluator::assign(const Expression& pattern, const Value& value) {
  if (const auto* variable = std::get_if<Variable>(&pattern.node)) {
    setVariable(variable->name, value);
  } else if (const auto* property = std::get_if<Property>(&pattern.node)) {
    assignProperty(*property, value);
  } else if (const auto* names = std::get_if<ListOf>(&pattern.node)) {
    const List* const list = value.list();
    if (list == nullptr || list->items.size() < names->items.size()) {
      failToGet(stringWithFormat("item %ld of %@", names->items.size(), value.source()));
    }
    for (std::size_t i = 0; i < names->items.size(); ++i) assign(*names->items[i], list->items[i]);
  }
}

void Evaluator::setVariable(const std::string& name, const Value& value) {
  Frame& frame = frames_.back();
  const bool isShared =
      frame.globals.contains(name) || (globals_.contains(name) && !frame.locals.contains(name));
  (isShared ? globals_ : frame.values)[name] = value;
}

Evaluator::Flow Evaluator::run(const Return& node) {
  frames_.back().result = node.value ? evaluate(*node.value) : Value();
  return Flow::Return;
}

Evaluator::Flow Evaluator::run(const Declaration& node) {
  Frame& frame = frames_.back();
  for (const std::string& name : node.names)
    (node.isGlobal ? frame.globals : frame.locals).insert(name);
  return Flow::Next;
}

Evaluator::Flow Evaluator::run(const Try& node) {
  try {
    return execute(node.body);
  } catch (const ScriptError& error) {
    if (!node.message.empty()) setVariable(node.message, Value(error.briefMessage));
    if (!node.number.empty()) setVariable(node.number, Value(std::int64_t{error.number}));
  }
  return execute(node.onError);
}

Evaluator::Flow Evaluator::run(const Raise& node) {
  ScriptError error{ScriptErrorGeneral, "An error of type -2700 has occurred.", ""};
  if (node.number) error.number = static_cast<std::int32_t>(integer(*node.number));
  if (node.message) error.briefMessage = text(*node.message);
  throw error;
}

}  // namespace qb::scripting
