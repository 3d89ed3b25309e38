#pragma once

#include <functional>
#include <vector>

#include "Platform/Dialogs.h"
#include "Platform/Graphics.h"
#include "PlatformDesktop/windows/DesktopWindowServer.h"

namespace qb {

class DialogWindow;

/// Dialogs of this program's own making: above the panel, with the X keyboard focus for as long as
/// they are up. Nothing is grabbed. Main thread.
class DesktopDialogs : public Dialogs {
 public:
  DesktopDialogs(DesktopWindowServer& windowServer, Graphics& graphics);
  ~DesktopDialogs() override;

  std::int32_t runModal(Alert& alert) override;
  std::optional<std::vector<std::string>> runModal(const OpenPanel& panel) override;

  /// Told true when the first dialog comes up, false when the last one has gone.
  void setUpObserver(std::function<void(bool)> observer) { upObserver_ = std::move(observer); }
  bool isUp() const { return !windows_.empty(); }

 private:
  std::int32_t run(DialogWindow& window, QWidget& focus, ModalSession& session);
  void raiseDialogs();

  DesktopWindowServer& windowServer_;
  Graphics& graphics_;
  std::function<void(bool)> upObserver_;
  /// The innermost last.
  std::vector<DialogWindow*> windows_;
};

}  // namespace qb
