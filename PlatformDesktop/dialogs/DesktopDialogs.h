#pragma once

#include <functional>
#include <vector>

#include "Platform/Dialogs.h"
#include "Platform/EventTap.h"
#include "Platform/Graphics.h"
#include "PlatformDesktop/windows/DesktopWindowServer.h"

namespace qb {

class DialogWindow;

/// Dialogs of this program's own making: above the panel, with the X keyboard focus for as long as
/// they are up. Nothing is grabbed here; a recorder that listens needs the keyboard kept for this
/// process, and its keys brought by `deliverKey`. Main thread.
class DesktopDialogs : public Dialogs {
 public:
  DesktopDialogs(DesktopWindowServer& windowServer, Graphics& graphics);
  ~DesktopDialogs() override;

  std::int32_t runModal(Alert& alert) override;
  std::optional<std::vector<std::string>> runModal(const OpenPanel& panel) override;
  void beep() override;

  /// Told when a dialog has come up or gone, and when a recorder begins or ends to listen.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }
  bool isUp() const { return !dialogs_.empty(); }
  /// The innermost dialog has a recorder that listens.
  bool listens() const;
  /// A key that has been kept for this process, for the innermost dialog: the recorder while it
  /// listens, and those that serve a dialog otherwise.
  void deliverKey(const TappedEvent& key);

 private:
  struct Dialog {
    DialogWindow& window;
    /// Null for none.
    DialogKeyRecorder* recorder;
  };

  std::int32_t run(Dialog dialog, QWidget& focus, ModalSession& session);
  void noteChange() const;
  void raiseDialogs();

  DesktopWindowServer& windowServer_;
  Graphics& graphics_;
  std::function<void()> observer_;
  /// The innermost last.
  std::vector<const Dialog*> dialogs_;
};

}  // namespace qb
