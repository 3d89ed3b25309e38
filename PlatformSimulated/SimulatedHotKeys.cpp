#include "PlatformSimulated/SimulatedHotKeys.h"

#include <algorithm>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"

namespace qb {

std::uint32_t hotKeyModifiers(EventFlags flags) {
  std::uint32_t modifiers = 0;
  if ((flags & EventFlagCommand) != 0) modifiers |= HotKeyModifierCommand;
  if ((flags & EventFlagShift) != 0) modifiers |= HotKeyModifierShift;
  if ((flags & EventFlagOption) != 0) modifiers |= HotKeyModifierOption;
  if ((flags & EventFlagControl) != 0) modifiers |= HotKeyModifierControl;
  return modifiers;
}

class SimulatedHotKeys::SimulatedRegistration : public HotKeys::Registration {
 public:
  SimulatedRegistration(std::weak_ptr<Table> table, int key)
      : table_(std::move(table)), key_(key) {}
  ~SimulatedRegistration() override {
    if (const auto table = table_.lock()) {
      std::erase_if(table->entries, [this](const auto& entry) { return entry.first == key_; });
    }
  }

 private:
  std::weak_ptr<Table> table_;
  int key_;
};

SimulatedHotKeys::SimulatedHotKeys() : table_(std::make_shared<Table>()) {}

SimulatedHotKeys::~SimulatedHotKeys() = default;

std::unique_ptr<HotKeys::Registration> SimulatedHotKeys::registerEventHotKey(
    std::uint16_t keyCode, std::uint32_t modifiers, HotKeyID id) {
  if (isRegistered(keyCode, modifiers)) return nullptr;
  if (isHeldByAnotherProgram(keyCode, modifiers)) {
    log(stringWithFormat("Hot key refused: another program has %@%@%@%@key code %i",
                         (modifiers & HotKeyModifierControl) != 0 ? "Control-" : "",
                         (modifiers & HotKeyModifierOption) != 0 ? "Option-" : "",
                         (modifiers & HotKeyModifierShift) != 0 ? "Shift-" : "",
                         (modifiers & HotKeyModifierCommand) != 0 ? "Command-" : "", keyCode));
    return nullptr;
  }
  const int key = nextKey_++;
  table_->entries.push_back({key, {keyCode, modifiers, id}});
  return std::make_unique<SimulatedRegistration>(table_, key);
}

std::vector<SimulatedHotKeys::Entry> SimulatedHotKeys::registered() const {
  std::vector<Entry> all;
  for (const auto& [key, entry] : table_->entries) all.push_back(entry);
  return all;
}

bool SimulatedHotKeys::isRegistered(std::uint16_t keyCode, std::uint32_t modifiers) const {
  return std::any_of(table_->entries.begin(), table_->entries.end(), [&](const auto& entry) {
    return entry.second.keyCode == keyCode && entry.second.modifiers == modifiers;
  });
}

void SimulatedHotKeys::setOwnedByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers) {
  ownedByAnotherProgram_.insert({keyCode, modifiers});
}

void SimulatedHotKeys::releaseByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers) {
  ownedByAnotherProgram_.erase({keyCode, modifiers});
}

bool SimulatedHotKeys::processKeyDown(std::uint16_t keyCode, EventFlags flags, bool isRepeat,
                                      bool keyboardIsKept) {
  const std::uint32_t modifiers = hotKeyModifiers(flags);
  // What another program has never gets further than to that program.
  if (!keyboardIsKept && isHeldByAnotherProgram(keyCode, modifiers)) return true;
  for (const auto& [key, entry] : table_->entries) {
    if (entry.keyCode != keyCode || entry.modifiers != modifiers) continue;
    const HotKeyID id = entry.id;
    const Handler handler = handler_;
    return !handler || handler({id, isRepeat});
  }
  return false;
}

}  // namespace qb
