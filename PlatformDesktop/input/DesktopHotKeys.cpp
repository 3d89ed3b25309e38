#include "PlatformDesktop/input/DesktopHotKeys.h"

#include <map>
#include <utility>

namespace qb {

namespace {

EventFlags eventFlags(std::uint32_t modifiers) {
  EventFlags flags = 0;
  if (modifiers & HotKeyModifierCommand) flags |= EventFlagCommand;
  if (modifiers & HotKeyModifierShift) flags |= EventFlagShift;
  if (modifiers & HotKeyModifierOption) flags |= EventFlagOption;
  if (modifiers & HotKeyModifierControl) flags |= EventFlagControl;
  return flags;
}

}  // namespace

struct DesktopHotKeys::Table {
  explicit Table(InputThread& inputThread) : thread(inputThread) {}

  InputThread& thread;
  std::map<Combination, HotKeyID> keys;
};

class DesktopHotKeys::TableRegistration : public Registration {
 public:
  TableRegistration(std::weak_ptr<Table> table, const Combination& combination)
      : table_(std::move(table)), combination_(combination) {}
  ~TableRegistration() override {
    const auto table = table_.lock();
    if (!table) return;
    table->keys.erase(combination_);
    table->thread.post(
        [combination = combination_](InputWorker& worker) { worker.removeHotKey(combination); });
  }
  TableRegistration(const TableRegistration&) = delete;
  TableRegistration& operator=(const TableRegistration&) = delete;

 private:
  std::weak_ptr<Table> table_;
  Combination combination_;
};

DesktopHotKeys::DesktopHotKeys(InputThread& thread) : table_(std::make_shared<Table>(thread)) {}

DesktopHotKeys::~DesktopHotKeys() = default;

std::unique_ptr<HotKeys::Registration> DesktopHotKeys::registerEventHotKey(std::uint16_t keyCode,
                                                                           std::uint32_t modifiers,
                                                                           HotKeyID id) {
  const Combination combination{keyCode, eventFlags(modifiers)};
  if (table_->keys.contains(combination)) return nullptr;
  const bool granted = table_->thread.ask(
      [combination](InputWorker& worker) { return worker.addHotKey(combination); });
  if (!granted) return nullptr;
  table_->keys.emplace(combination, id);
  return std::make_unique<TableRegistration>(table_, combination);
}

bool DesktopHotKeys::isHeldByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers) {
  const Combination combination{keyCode, eventFlags(modifiers)};
  return table_->thread.ask(
      [combination](InputWorker& worker) { return worker.isHeldByAnotherProgram(combination); });
}

bool DesktopHotKeys::press(const Combination& combination, bool isRepeat) {
  const auto key = table_->keys.find(combination);
  if (key == table_->keys.end()) return false;
  if (!handler_) return true;
  const HotKeyPress press{.id = key->second, .isRepeat = isRepeat};
  // It may be replaced meanwhile.
  const Handler handler = handler_;
  return handler(press);
}

}  // namespace qb
