#include "QuillboxCommon/scripting/ScriptEvaluator.h"

#include <utility>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/scripting/ScriptOperators.h"

namespace qb::scripting {

namespace {

constexpr std::size_t longestPath = 32;

}  // namespace

Evaluator::DepthGuard::DepthGuard(Evaluator& evaluator) : depth_(evaluator.depth_) {
  if (depth_ >= evaluator.limits_.depth) {
    throw ScriptError{ScriptErrorStackOverflow, "Stack overflow.", ""};
  }
  ++depth_;
}

Evaluator::TargetGuard::TargetGuard(Evaluator& evaluator, Value target)
    : targets_(evaluator.targets_) {
  targets_.push_back(std::move(target));
}

/// Makes a frame the innermost one while it lives.
class Evaluator::FrameGuard {
 public:
  FrameGuard(Evaluator& evaluator, Frame frame) : frames_(evaluator.frames_) {
    frames_.push_back(std::move(frame));
  }
  ~FrameGuard() { frames_.pop_back(); }
  FrameGuard(const FrameGuard&) = delete;
  FrameGuard& operator=(const FrameGuard&) = delete;

 private:
  std::vector<Frame>& frames_;
};

Value Evaluator::run() {
  frames_.emplace_back();
  const TargetGuard target(*this, Value(Me{}));
  for (const auto& [name, value] : program_.properties) globals_[name] = evaluate(*value);
  const auto explicitRun = program_.handlers.find("run");
  if (program_.body.empty() && explicitRun != program_.handlers.end()) {
    execute(explicitRun->second.body);
  } else {
    execute(program_.body);
  }
  return frames_.front().result;
}

void Evaluator::takeStep() {
  if (++steps_ > limits_.steps) {
    throw ScriptError{ScriptErrorTimeout, "The script does not come to an end.", ""};
  }
}

void Evaluator::takeEffort(std::size_t bytes) {
  effort_ += bytes;
  if (bytes > limits_.effort || effort_ > limits_.effort) {
    throw ScriptError{ScriptErrorOutOfMemory, "Out of memory.", ""};
  }
}

Value Evaluator::counted(Value value) {
  takeEffort(value.weight());
  return value;
}

Value Evaluator::evaluate(const Expression& expression) {
  const DepthGuard guard(*this);
  takeStep();
  return std::visit([this](const auto& node) { return valueOf(node); }, expression.node);
}

std::string Evaluator::text(const Expression& expression) {
  const Value value = evaluate(expression);
  auto text = value.coercedText();
  if (!text) failToCoerce(value, "text");
  return std::move(*text);
}

std::int64_t Evaluator::integer(const Expression& expression) {
  const Value value = evaluate(expression);
  const auto integer = value.coercedInteger();
  if (!integer) failToCoerce(value, "integer");
  return *integer;
}

bool Evaluator::condition(const Expression& expression) {
  const Value value = evaluate(expression);
  return *coerced(value, ValueType::Boolean).boolean();
}

Value Evaluator::valueOf(const Variable& node) {
  const Frame& frame = frames_.back();
  const auto own = frame.values.find(node.name);
  if (own != frame.values.end()) return own->second;
  const auto shared = globals_.find(node.name);
  if (shared != globals_.end() && !frame.locals.contains(node.name)) return shared->second;
  throw ScriptError{ScriptErrorUndefinedVariable,
                    stringWithFormat("The variable %@ is not defined.", node.text), ""};
}

Value Evaluator::valueOf(SpecialName name) {
  switch (name) {
    case SpecialName::Me:
      return Value(Me{});
    case SpecialName::It:
      return targets_.back();
    case SpecialName::Result:
      break;
  }
  const Value& result = frames_.back().result;
  return result.isNone() ? valueOf(Variable{"result", "result"}) : result;
}

Value Evaluator::valueOf(const ListOf& node) {
  std::vector<Value> items;
  for (const auto& item : node.items) items.push_back(evaluate(*item));
  return counted(Value::list(std::move(items)));
}

Value Evaluator::valueOf(const Unary& node) {
  if (node.operation == UnaryOperator::Not) return Value(!condition(*node.operand));
  return applied(BinaryOperator::Subtract, Value(std::int64_t{0}), evaluate(*node.operand));
}

Value Evaluator::valueOf(const Binary& node) {
  if (node.operation == BinaryOperator::And) {
    return Value(condition(*node.left) && condition(*node.right));
  }
  if (node.operation == BinaryOperator::Or) {
    return Value(condition(*node.left) || condition(*node.right));
  }
  const Value left = evaluate(*node.left);
  const Value right = evaluate(*node.right);
  takeEffort(effortOf(node.operation, left, right));
  return applied(node.operation, left, right);
}

Value Evaluator::valueOf(const Coercion& node) {
  return counted(coerced(evaluate(*node.value), node.type));
}

Value Evaluator::valueOf(const ApplicationNamed& node) {
  return Value(ScriptElement{{text(*node.name), node.byIdentifier}, {}});
}

Value Evaluator::containerOf(const ExpressionPointer& container) {
  return container ? evaluate(*container) : targets_.back();
}

Value Evaluator::valueOf(const Part& node) {
  const Value whole = containerOf(node.container);
  const std::int64_t from = node.from ? integer(*node.from) : 0;
  const std::int64_t to = node.to ? integer(*node.to) : 0;
  // Each piece of a text is a value of its own for a moment.
  takeEffort(whole.text() != nullptr ? 32 * whole.weight() : whole.weight());
  return chosenParts(node, whole, from, to);
}

Value Evaluator::valueOf(const Property& node) {
  const Value container = containerOf(node.container);
  takeEffort(container.text() != nullptr ? 32 * container.weight() : container.weight());
  const ScriptElement* const element = container.element();
  if (element != nullptr && isOfSystemEvents(element->application) && !element->path.empty()) {
    if (const auto value = propertyOfElement(node.name, *element)) return *value;
  }
  return propertyOf(node.name, container);
}

Value Evaluator::valueOf(const Element& node) {
  const Value container = containerOf(node.container);
  const Value selector = node.selector ? evaluate(*node.selector) : Value("");
  ScriptElement::Step step{node.elementClass, ScriptElement::Selection::Name,
                           selector.coercedText().value_or("")};
  if (selector.number()) step.selection = ScriptElement::Selection::Index;
  if (node.selection) step.selection = *node.selection;
  ScriptElement element;
  if (container.element() != nullptr) element = *container.element();
  element.path.push_back(std::move(step));
  const bool isThing = container.element() != nullptr && selector.coercedText() &&
                       element.path.size() <= longestPath;
  if (!isThing) failToGet(element.description());
  return counted(Value(std::move(element)));
}

Value Evaluator::valueOf(const HandlerCall& node) {
  const auto handler = program_.handlers.find(node.name);
  const ScriptElement* const target = targets_.back().element();
  const bool isForTarget = target != nullptr && !node.isMine;
  if (isForTarget || handler == program_.handlers.end()) {
    throw ScriptError{ScriptErrorNotUnderstood,
                      stringWithFormat("Can\u2019t continue %@.", node.text),
                      isForTarget ? target->application.name : ""};
  }
  return call(node, handler->second);
}

Value Evaluator::call(const HandlerCall& node, const Handler& handler) {
  if (node.arguments.size() != handler.parameters.size()) {
    throw ScriptError{ScriptErrorParameter,
                      stringWithFormat("%@ takes %ld parameters, not %ld.", node.text,
                                       handler.parameters.size(), node.arguments.size()),
                      ""};
  }
  Frame frame;
  for (std::size_t i = 0; i < handler.parameters.size(); ++i) {
    frame.locals.insert(handler.parameters[i]);
    frame.values[handler.parameters[i]] = evaluate(*node.arguments[i]);
  }
  const TargetGuard target(*this, Value(Me{}));
  const FrameGuard own(*this, std::move(frame));
  execute(handler.body);
  return frames_.back().result;
}

}  // namespace qb::scripting
