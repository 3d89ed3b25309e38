#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Platform/Dialogs.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"

namespace qb {

/// The alert that is up, under the hands of the user.
class AlertOnScreen {
 public:
  AlertOnScreen(const Alert& alert, ModalSession& session) : alert_(alert), session_(session) {}

  const Alert& alert() const { return alert_; }
  /// Replaces what the text field holds. Throws `std::logic_error` when there is none.
  void type(const std::string& text);
  /// Throws `std::logic_error` when there is no button of that title.
  void press(const std::string& title);
  void pressReturn();
  void pressEscape();
  /// The recorder, which gets what the keyboard types while it listens. Throws `std::logic_error`
  /// when there is none.
  DialogKeyRecorder& recorder() const;

 private:
  const Alert& alert_;
  ModalSession& session_;
};

/// Alerts and open panels, answered as a test has said beforehand, from outside, a moment after
/// they are up:
///
///     platform.dialogs().answerAlert("OK");
///     platform.dialogs().answerAlert([](AlertOnScreen& alert) {
///       alert.type("Notes");
///       alert.pressReturn();
///     });
///
/// One that nobody has spoken of throws `std::logic_error` with its text.
class SimulatedDialogs : public Dialogs {
 public:
  explicit SimulatedDialogs(SimulatedRunLoopHost& host) : host_(host) {}
  ~SimulatedDialogs() override;

  std::int32_t runModal(Alert& alert) override;
  std::optional<std::vector<std::string>> runModal(const OpenPanel& panel) override;
  void beep() override { ++numberOfBeeps_; }

  /// For the keyboard: whether a dialog has it kept, so that it gets every key.
  bool keepsKeyboard() const;
  /// For the keyboard: a key-down that no hot key has taken, for the dialog that keeps it.
  void deliverKeyDown(std::uint16_t keyCode, EventFlags flags, bool isRepeat);

  /// What the user does with an alert. Who presses nothing leaves it up.
  using User = std::function<void(AlertOnScreen&)>;
  /// For the next alert that nothing has been said of.
  void answerAlert(User user) { answers_.push_back(std::move(user)); }
  /// Presses the button of that title.
  void answerAlert(std::string buttonTitle);
  /// Leaves the next alert up, for the program to close.
  void leaveAlertUp() {
    answers_.push_back([](AlertOnScreen&) {});
  }
  /// For every alert that nothing else has been said of; an empty one takes it back.
  void setUser(User user) { user_ = std::move(user); }
  void answerOpenPanel(std::vector<std::string> paths) { paths_.push_back(std::move(paths)); }
  void cancelOpenPanel() { paths_.push_back(std::nullopt); }
  /// The answers that no dialog has asked for.
  std::size_t numberOfAnswersLeft() const { return answers_.size() + paths_.size(); }

  /// An alert as it was when it came up, and how it ended.
  struct ShownAlert {
    AlertStyle style = AlertStyleWarning;
    std::string messageText, informativeText;
    /// Their titles; the first is the default button.
    std::vector<std::string> buttons;
    std::string escapeButton;
    /// Empty for none.
    std::string iconName;
    /// "none", "spacer 380x20", "text field 240x22 'Notes'", "image 100x50 of Name" or "key
    /// recorder 340x62 'Ctrl+T'".
    std::string accessoryView = "none";
    RunLoopMode mode = RunLoopMode::Default;
    std::optional<std::int32_t> response;
  };
  const std::vector<ShownAlert>& shownAlerts() const { return shownAlerts_; }
  const std::vector<OpenPanel>& shownOpenPanels() const { return shownOpenPanels_; }
  /// Those that are up now, the innermost last.
  std::vector<const Alert*> alertsOnScreen() const;
  int numberOfBeeps() const { return numberOfBeeps_; }

 private:
  SimulatedRunLoopHost& host_;
  std::deque<User> answers_;
  User user_;
  std::deque<std::optional<std::vector<std::string>>> paths_;
  std::vector<ShownAlert> shownAlerts_;
  std::vector<OpenPanel> shownOpenPanels_;
  /// The innermost last.
  std::vector<AlertOnScreen*> onScreen_;
  int numberOfBeeps_ = 0;
};

}  // namespace qb
