#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/ModalSession.h"
#include "QuillboxCommon/views/Event.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

/// Something inside a dialog, as a model: the platform shows a real control for it, and what the
/// user does there arrives here. Main thread.
class DialogControl {
 public:
  virtual ~DialogControl() = default;
  /// In points.
  Size size() const { return size_; }

 protected:
  explicit DialogControl(Size size) : size_(size) {}

 private:
  Size size_;
};

/// Empty room, which makes an alert at least as wide.
class DialogSpacer : public DialogControl {
 public:
  explicit DialogSpacer(Size size) : DialogControl(size) {}
};

/// One line of text to edit. It has the keyboard as long as its dialog has, with all of the text
/// selected at first.
class DialogTextField : public DialogControl {
 public:
  DialogTextField(Size size, std::string text)
      : DialogControl(size), stringValue_(std::move(text)) {}
  const std::string& stringValue() const { return stringValue_; }
  /// Counts for the next time that the dialog is shown; the platform sets what is typed.
  void setStringValue(std::string text) { stringValue_ = std::move(text); }

 private:
  std::string stringValue_;
};

/// A picture at its own size, in the middle of the control.
class DialogImage : public DialogControl {
 public:
  DialogImage(Size size, Image image) : DialogControl(size), image_(std::move(image)) {}
  const Image& image() const { return image_; }

 private:
  Image image_;
};

/// Waits for one combination of keys, as a model with a mind of its own: the platform shows how it
/// looks and hands it what the user does. It listens from the moment that its dialog is up. While
/// it listens, and no other dialog stands above its own, the platform keeps the keyboard from every
/// other program and brings it all keys, those of its window manager too; presses of hot keys only
/// when the hot-key handler has not dealt with them. It is told to stop when the user turns to
/// another program and when its dialog closes.
class DialogKeyRecorder : public DialogControl {
 public:
  struct Look {
    /// What is printed on the keys to be shown, in their order; none shows the text.
    std::vector<std::string> keyCaps;
    std::string text;
    /// A small line below.
    std::string hint;
    bool isListening = false;
    /// The hint tells of a mistake.
    bool warns = false;
    /// There is something to clear.
    bool canClear = false;
    friend bool operator==(const Look&, const Look&) = default;
  };

  virtual Look look() const = 0;
  virtual bool isListening() const = 0;
  // What the user does. All are harmless when there is nothing to do.
  virtual void listen() = 0;
  virtual void stopListening() = 0;
  virtual void clear() = 0;
  /// A key that is no modifier has gone down while it listens. False when it is none of the
  /// recorder's: it has stopped listening then, and the key is the dialog's.
  virtual bool keyDown(std::uint16_t keyCode, EventFlags flags) = 0;

  /// Told of each change of the look, and of the listening; an empty one ends that.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

 protected:
  explicit DialogKeyRecorder(Size size) : DialogControl(size) {}
  void changed() {
    // It may be replaced meanwhile.
    if (const auto observer = observer_) observer();
  }

 private:
  std::function<void()> observer_;
};

/// How an alert is marked when it brings no icon.
enum AlertStyle : std::int32_t {
  AlertStyleWarning = 0,
  AlertStyleInformational = 1,
  AlertStyleCritical = 2,
};

/// The results of an alert made whole, and of one to which buttons are added.
enum AlertResponse : std::int32_t {
  AlertOtherReturn = -1,
  AlertAlternateReturn = 0,
  AlertDefaultReturn = 1,
  AlertFirstButtonReturn = 1000,
};

/// A question or a message to the user. "\r" and "\n" both end a line of its texts.
struct Alert {
  struct Button {
    std::string title;
    /// What the run answers when this button was pressed.
    std::int32_t response = 0;
    friend bool operator==(const Button&, const Button&) = default;
  };

  /// An alert with a default button and up to two more, whose responses are those of
  /// `AlertResponse`; an empty title makes no button.
  static Alert withMessageText(std::string messageText, const std::string& defaultButton,
                               const std::string& alternateButton, const std::string& otherButton,
                               std::string informativeText);
  /// Its response is 1000 for the first button, 1001 for the second, and so on.
  void addButtonWithTitle(std::string title);
  /// The button of the Escape key and of the close box, which must do no harm: the one that was
  /// set, else the one titled "Cancel", else the default button.
  const Button& escapeButton() const;

  AlertStyle style = AlertStyleWarning;
  /// The title.
  std::string messageText;
  std::string informativeText;
  /// Empty for the mark of the style.
  Image icon;
  /// The first is the default button, which Return presses. Never empty when the alert is run.
  std::vector<Button> buttons;
  std::optional<std::size_t> escapeButtonIndex;
  /// Null for none.
  std::shared_ptr<DialogControl> accessoryView;
};

/// A choice of existing files and folders.
struct OpenPanel {
  bool canChooseFiles = true;
  bool canChooseDirectories = false;
  bool allowsMultipleSelection = false;
  /// Extensions without a dot; none for all. "app" means applications.
  std::vector<std::string> allowedFileTypes;
  /// An absolute path; empty for the platform's choice.
  std::string directory;
};

/// Windows that the user has to answer before anything else of this program goes on. Each run is a
/// `ModalSession`: the loop is in the modal-panel mode meanwhile, and runs nest. They stand above
/// the panel and take the keyboard; whoever runs one does so inside a user interaction. Main
/// thread.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  /// Answers the response of the pressed button, or `ModalResponseAbort`.
  virtual std::int32_t runModal(Alert& alert) = 0;
  /// The absolute paths that were chosen; none when the panel was cancelled or aborted.
  virtual std::optional<std::vector<std::string>> runModal(const OpenPanel& panel) = 0;
  /// `NSBeep`: the desktop's sound for what cannot be done. Harmless where there is none.
  virtual void beep() = 0;
  /// Ends the innermost run as if it had never been answered. Nothing when there is none.
  void abortModal() { ModalSession::abortModal(); }
};

inline Alert Alert::withMessageText(std::string messageText, const std::string& defaultButton,
                                    const std::string& alternateButton,
                                    const std::string& otherButton, std::string informativeText) {
  Alert alert;
  alert.messageText = std::move(messageText);
  alert.informativeText = std::move(informativeText);
  alert.buttons.push_back({defaultButton, AlertDefaultReturn});
  if (!alternateButton.empty()) alert.buttons.push_back({alternateButton, AlertAlternateReturn});
  if (!otherButton.empty()) alert.buttons.push_back({otherButton, AlertOtherReturn});
  return alert;
}

inline void Alert::addButtonWithTitle(std::string title) {
  const auto response = AlertFirstButtonReturn + static_cast<std::int32_t>(buttons.size());
  buttons.push_back({std::move(title), response});
}

inline const Alert::Button& Alert::escapeButton() const {
  if (escapeButtonIndex && *escapeButtonIndex < buttons.size()) return buttons[*escapeButtonIndex];
  for (const Button& button : buttons) {
    if (button.title == "Cancel") return button;
  }
  return buttons.front();
}

}  // namespace qb
