#include "PlatformDesktop/dialogs/DesktopDialogs.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>

#include "Platform/KeyCodes.h"
#include "PlatformDesktop/dialogs/AlertContent.h"
#include "PlatformDesktop/dialogs/DialogWindow.h"
#include "PlatformDesktop/dialogs/KeyboardFocus.h"
#include "PlatformDesktop/dialogs/OpenPanelContent.h"

namespace qb {

namespace {

constexpr char programName[] = "Quillbox";

/// What a key does in every dialog, as Qt's name of it; 0 for nothing.
int dialogKey(const TappedEvent& key) {
  switch (key.keyCode) {
    case KeyCodeReturn:
    case KeyCodeEnter:
      return Qt::Key_Return;
    case KeyCodeEscape:
      return Qt::Key_Escape;
    case KeyCodeTab:
      return (key.flags & EventFlagShift) != 0 ? Qt::Key_Backtab : Qt::Key_Tab;
    case KeyCodeSpace:
      return Qt::Key_Space;
    default:
      return 0;
  }
}

}  // namespace

DesktopDialogs::DesktopDialogs(DesktopWindowServer& windowServer, Graphics& graphics)
    : windowServer_(windowServer), graphics_(graphics) {
  windowServer_.setDialogRaiser([this] { raiseDialogs(); });
}

DesktopDialogs::~DesktopDialogs() { windowServer_.setDialogRaiser({}); }

void DesktopDialogs::raiseDialogs() {
  for (const Dialog* const dialog : dialogs_) dialog->window.raise();
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
  auto* const recorder = dynamic_cast<DialogKeyRecorder*>(alert.accessoryView.get());
  if (recorder == nullptr) return run({window, nullptr}, *content->initialFocus(), session);
  recorder->setObserver([this, content] {
    content->refreshRecorder();
    noteChange();
  });
  const std::int32_t response = run({window, recorder}, *content->initialFocus(), session);
  recorder->setObserver({});
  return response;
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
  if (run({window, nullptr}, *content, session) == ModalResponseAbort) return std::nullopt;
  return content->paths();
}

void DesktopDialogs::beep() { QApplication::beep(); }

std::int32_t DesktopDialogs::run(Dialog dialog, QWidget& focus, ModalSession& session) {
  DialogWindow& window = dialog.window;
  DialogKeyRecorder* const recorder = dialog.recorder;
  const KeyboardFocus keyboard(windowServer_.connection());
  dialogs_.push_back(&dialog);
  window.present();
  windowServer_.restack();
  const auto id = static_cast<xcb_window_t>(window.winId());
  window.setPressObserver([&keyboard, id] { keyboard.give(id); });
  keyboard.give(id);
  focus.setFocus(Qt::ActiveWindowFocusReason);
  if (recorder != nullptr) {
    window.setLeaveObserver([this, &dialog] {
      if (dialogs_.back() == &dialog) dialog.recorder->stopListening();
    });
    recorder->listen();
  }
  // Only now may a keyboard that has been kept go: what is typed next is for this dialog.
  noteChange();
  const std::int32_t response = session.run();
  if (recorder != nullptr) recorder->stopListening();
  keyboard.restoreFrom(id);
  window.hide();
  std::erase(dialogs_, &dialog);
  noteChange();
  xcb_flush(windowServer_.connection());
  return response;
}

bool DesktopDialogs::listens() const {
  const DialogKeyRecorder* const recorder = dialogs_.empty() ? nullptr : dialogs_.back()->recorder;
  return recorder != nullptr && recorder->isListening();
}

void DesktopDialogs::noteChange() const {
  if (observer_) observer_();
}

void DesktopDialogs::deliverKey(const TappedEvent& key) {
  if (dialogs_.empty() || key.type != EventTypeKeyDown) return;
  const Dialog& dialog = *dialogs_.back();
  if (listens() && (key.isRepeat || dialog.recorder->keyDown(key.keyCode, key.flags))) return;
  const int qtKey = dialogKey(key);
  if (qtKey == 0) return;
  QWidget* const target = dialog.window.focusWidget();
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, qtKey, Qt::NoModifier);
    QApplication::sendEvent(target != nullptr ? target : &dialog.window, &event);
  }
}

}  // namespace qb
