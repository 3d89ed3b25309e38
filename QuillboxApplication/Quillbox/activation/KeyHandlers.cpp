#include "Quillbox/activation/KeyHandlers.h"

#include <algorithm>
#include <utility>

#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Environment.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

std::uint32_t modifierOfActivationMethod(std::int32_t method) {
  switch (method) {
    case ActivationMethodOptionTab:
      return HotKeyModifierOption;
    case ActivationMethodCommandTab:
      return HotKeyModifierCommand;
    default:
      return 0;
  }
}

}  // namespace

KeyHandlers::~KeyHandlers() { RunLoop::main().cancelPreviousPerformRequests(this); }

void KeyHandlers::installKeyCodeHandler(std::uint16_t keyCode,
                                        const std::shared_ptr<KeyHandlerTarget>& target,
                                        std::string action) {
  if (!target) return;
  auto handler = std::make_shared<KeyHandler>();
  handler->target = target;
  handler->action = std::move(action);
  handler->keyCode = keyCode;
  handler->hotKeyRef = appDelegate_.platform().hotKeys().registerEventHotKey(
      keyCode, modifierOfActivationMethod(appDelegate_.activationMethod()), {keyCode, keyCode});
  keyHandlers_.forgetGone();
  keyHandlers_.add(handler);
  target->keyHandlers_.push_back(std::move(handler));
}

void KeyHandlers::removeKeyCodeHandler(std::uint16_t keyCode,
                                       const std::shared_ptr<KeyHandlerTarget>& target) {
  if (!target) return;
  const auto& handlers = target->keyHandlers_;
  const auto found = std::find_if(handlers.begin(), handlers.end(), [&](const auto& handler) {
    return handler->keyCode == keyCode && !handler->removed;
  });
  if (found == handlers.end()) return;
  const std::shared_ptr<KeyHandler>& handler = *found;
  handler->removed = true;
  handler->hotKeyRef.reset();
  RunLoop::main().performAfterDelay(this, "removeKeyHandler:", 0, [handler] {
    if (const auto owner = handler->target.lock()) std::erase(owner->keyHandlers_, handler);
  });
}

void KeyHandlers::performKeyCode(std::int64_t keyCode, bool isApplicationInvocation) {
  const PropertyList information = PropertyList::dictionary(
      {{std::string(kKeyIsApplicationInvocationKey), isApplicationInvocation}});
  // A handler may install others.
  for (const auto& handler : keyHandlers_.members()) {
    if (handler->keyCode != keyCode) continue;
    if (const auto target = handler->target.lock()) {
      target->performKeyAction(handler->action, information);
    }
  }
}

}  // namespace qb
