#include "PlatformDesktop/dialogs/DesktopDialogs.h"

#include <algorithm>

#include "PlatformDesktop/dialogs/AlertContent.h"
#include "PlatformDesktop/dialogs/DialogWindow.h"
#include "PlatformDesktop/dialogs/KeyboardFocus.h"
#include "PlatformDesktop/dialogs/OpenPanelContent.h"

namespace qb {

namespace {

constexpr char programName[] = "Quillbox";

}  // namespace

DesktopDialogs::DesktopDialogs(DesktopWindowServer& windowServer, Graphics& graphics)
    : windowServer_(windowServer), graphics_(graphics) {
  windowServer_.setDialogRaiser([this] { raiseDialogs(); });
}

DesktopDialogs::~DesktopDialogs() { windowServer_.setDialogRaiser({}); }

void DesktopDialogs::raiseDialogs() {
  for (DialogWindow* const window : windows_) window->raise();
}

std::int32_t DesktopDialogs::runModal(Alert& alert) {
  ModalSession session;
  DialogWindow window(programName, windowServer_.compositorIsRunning(),
                      {.confirm = [&] { session.stop(alert.buttons.front().response); },
                       .cancel = [&] { session.stop(alert.escapeButton().response); }});
  // For whoever lists windows or reads them aloud; the title bar shows the program's name.
  window.setWindowTitle(QString::fromStdString(alert.messageText));
  auto* const content =
      new AlertContent(alert, graphics_.imageNamed("QuillboxLogo"),
                       [&session](std::int32_t response) { session.stop(response); });
  window.setContent(content);
  return run(window, *content->initialFocus(), session);
}

std::optional<std::vector<std::string>> DesktopDialogs::runModal(const OpenPanel& panel) {
  ModalSession session;
  auto* const content = new OpenPanelContent(panel);
  DialogWindow window(
      "Open", windowServer_.compositorIsRunning(),
      {.confirm = [] {}, .cancel = [&session] { session.stop(ModalResponseAbort); }});
  window.setContent(content);
  QObject::connect(content, &QFileDialog::finished, &window, [&session](int result) {
    session.stop(result == QDialog::Accepted ? ModalResponseStop : ModalResponseAbort);
  });
  if (run(window, *content, session) == ModalResponseAbort) return std::nullopt;
  return content->paths();
}

std::int32_t DesktopDialogs::run(DialogWindow& window, QWidget& focus, ModalSession& session) {
  const KeyboardFocus keyboard(windowServer_.connection());
  windows_.push_back(&window);
  if (windows_.size() == 1 && upObserver_) upObserver_(true);
  window.present();
  windowServer_.restack();
  const auto id = static_cast<xcb_window_t>(window.winId());
  window.setPressObserver([&keyboard, id] { keyboard.give(id); });
  keyboard.give(id);
  focus.setFocus(Qt::ActiveWindowFocusReason);
  const std::int32_t response = session.run();
  keyboard.restoreFrom(id);
  window.hide();
  std::erase(windows_, &window);
  if (windows_.empty() && upObserver_) upObserver_(false);
  xcb_flush(windowServer_.connection());
  return response;
}

}  // namespace qb
