#include "PlatformSimulated/SimulatedDialogs.h"

#include <stdexcept>
#include <utility>

#include "Platform/KeyCodes.h"
#include "PlatformSimulated/SimulatedGraphics.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

std::string descriptionOf(const DialogControl* control) {
  if (control == nullptr) return "none";
  const std::string size = stringWithFormat("%@x%@", control->size().width, control->size().height);
  if (const auto* field = dynamic_cast<const DialogTextField*>(control)) {
    return stringWithFormat("text field %@ '%@'", size, field->stringValue());
  }
  if (const auto* image = dynamic_cast<const DialogImage*>(control)) {
    return stringWithFormat("image %@ of %@", size, simulatedImageName(image->image()));
  }
  if (const auto* recorder = dynamic_cast<const DialogKeyRecorder*>(control)) {
    const DialogKeyRecorder::Look look = recorder->look();
    std::string shown = look.keyCaps.empty() ? look.text : "";
    for (const std::string& cap : look.keyCaps) shown += (shown.empty() ? "" : "+") + cap;
    return stringWithFormat("key recorder %@ '%@'", size, shown);
  }
  return "spacer " + size;
}

DialogKeyRecorder* recorderOf(const Alert& alert) {
  return dynamic_cast<DialogKeyRecorder*>(alert.accessoryView.get());
}

}  // namespace

void AlertOnScreen::type(const std::string& text) {
  auto* const field = dynamic_cast<DialogTextField*>(alert_.accessoryView.get());
  if (field == nullptr) throw std::logic_error("No text field in alert: " + alert_.messageText);
  field->setStringValue(text);
}

void AlertOnScreen::press(const std::string& title) {
  for (const Alert::Button& button : alert_.buttons) {
    if (button.title == title) return session_.stop(button.response);
  }
  throw std::logic_error("No button " + title + " in alert: " + alert_.messageText);
}

void AlertOnScreen::pressReturn() { session_.stop(alert_.buttons.front().response); }

void AlertOnScreen::pressEscape() { session_.stop(alert_.escapeButton().response); }

DialogKeyRecorder& AlertOnScreen::recorder() const {
  DialogKeyRecorder* const recorder = recorderOf(alert_);
  if (recorder == nullptr) throw std::logic_error("No recorder in alert: " + alert_.messageText);
  return *recorder;
}

SimulatedDialogs::~SimulatedDialogs() = default;

bool SimulatedDialogs::keepsKeyboard() const {
  if (onScreen_.empty()) return false;
  const DialogKeyRecorder* const recorder = recorderOf(onScreen_.back()->alert());
  return recorder != nullptr && recorder->isListening();
}

void SimulatedDialogs::deliverKeyDown(std::uint16_t keyCode, EventFlags flags, bool isRepeat) {
  if (isRepeat || !keepsKeyboard()) return;
  AlertOnScreen& dialog = *onScreen_.back();
  if (dialog.recorder().keyDown(keyCode, flags)) return;
  if (keyCode == KeyCodeReturn || keyCode == KeyCodeEnter) dialog.pressReturn();
}

std::vector<const Alert*> SimulatedDialogs::alertsOnScreen() const {
  std::vector<const Alert*> alerts;
  for (const AlertOnScreen* const dialog : onScreen_) alerts.push_back(&dialog->alert());
  return alerts;
}

void SimulatedDialogs::answerAlert(std::string buttonTitle) {
  answers_.push_back(
      [title = std::move(buttonTitle)](AlertOnScreen& alert) { alert.press(title); });
}

std::int32_t SimulatedDialogs::runModal(Alert& alert) {
  if (alert.buttons.empty()) throw std::logic_error("Alert without a button");
  User user = user_;
  if (!answers_.empty()) {
    user = std::move(answers_.front());
    answers_.pop_front();
  }
  ShownAlert shown{.style = alert.style,
                   .messageText = alert.messageText,
                   .informativeText = alert.informativeText,
                   .buttons = {},
                   .escapeButton = alert.escapeButton().title,
                   .iconName = simulatedImageName(alert.icon),
                   .accessoryView = descriptionOf(alert.accessoryView.get()),
                   .response = std::nullopt};
  for (const Alert::Button& button : alert.buttons) shown.buttons.push_back(button.title);
  const std::size_t number = shownAlerts_.size();
  shownAlerts_.push_back(std::move(shown));
  if (!user) {
    throw std::logic_error("Unexpected alert: " + alert.messageText + ": " + alert.informativeText);
  }

  ModalSession session;
  AlertOnScreen onScreen(alert, session);
  onScreen_.push_back(&onScreen);
  // The user may come to it only after this alert has been closed by the program.
  const auto isUp = std::make_shared<bool>(true);
  host_.schedule(0, [this, number, isUp, &onScreen, user = std::move(user)] {
    if (!*isUp) return;
    shownAlerts_[number].mode = RunLoop::main().currentMode();
    if (DialogKeyRecorder* const recorder = recorderOf(onScreen.alert())) recorder->listen();
    user(onScreen);
  });
  const std::int32_t response = session.run();
  *isUp = false;
  std::erase(onScreen_, &onScreen);
  if (DialogKeyRecorder* const recorder = recorderOf(alert)) recorder->stopListening();
  shownAlerts_[number].response = response;
  return response;
}

std::optional<std::vector<std::string>> SimulatedDialogs::runModal(const OpenPanel& panel) {
  shownOpenPanels_.push_back(panel);
  if (paths_.empty()) throw std::logic_error("Unexpected open panel");
  auto paths = std::move(paths_.front());
  paths_.pop_front();
  ModalSession session;
  const auto isUp = std::make_shared<bool>(true);
  host_.schedule(0, [isUp, &session] {
    if (*isUp) session.stop();
  });
  const std::int32_t response = session.run();
  *isUp = false;
  return response == ModalResponseAbort ? std::nullopt : paths;
}

}  // namespace qb
