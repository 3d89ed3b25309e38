#pragma once

#include <memory>
#include <utility>

#include "Platform/HotKeys.h"
#include "PlatformDesktop/input/Combination.h"
#include "PlatformDesktop/input/InputThread.h"

namespace qb {

/// Main thread.
class DesktopHotKeys : public HotKeys {
 public:
  explicit DesktopHotKeys(InputThread& thread);
  ~DesktopHotKeys() override;

  void installEventHandler(Handler handler) override { handler_ = std::move(handler); }
  [[nodiscard]] std::unique_ptr<Registration> registerEventHotKey(std::uint16_t keyCode,
                                                                  std::uint32_t modifiers,
                                                                  HotKeyID id) override;

  bool isHeldByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers) override;

  // For DesktopInput.
  /// A key-down that came to this process and that the tap let pass. Answers whether it was a hot
  /// key and has been dealt with.
  bool press(const Combination& combination, bool isRepeat);

 private:
  struct Table;
  class TableRegistration;

  Handler handler_;
  /// Shared, since a registration may outlive its maker.
  std::shared_ptr<Table> table_;
};

}  // namespace qb
