#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/scripting/ScriptError.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// An application as a script names it.
struct ScriptApplication {
  std::string name;
  /// `name` is a bundle identifier.
  bool byIdentifier = false;

  friend bool operator==(const ScriptApplication&, const ScriptApplication&) = default;
};

/// Something inside an application, such as a menu item or a pane of the settings.
struct ScriptElement {
  enum class Selection : std::uint8_t { Index, Name, Identifier, Every };
  struct Step {
    /// "menu item", "pane" and so on.
    std::string elementClass;
    Selection selection = Selection::Name;
    /// Empty where every one is meant.
    std::string selector;

    friend bool operator==(const Step&, const Step&) = default;
  };
  ScriptApplication application;
  /// From the application inwards; empty for the application itself.
  std::vector<Step> path;

  /// As scripts write it, from the inside out: "menu \"Edit\" of menu bar 1 of process \"X\"". The
  /// application is left out unless it is all there is.
  std::string description() const;

  friend bool operator==(const ScriptElement&, const ScriptElement&) = default;
};

/// A question of a script to the user.
struct ScriptAlert {
  enum class Style : std::uint8_t { Informational, Warning, Critical };
  std::string messageText;
  std::string informativeText;
  Style style = Style::Informational;
  /// From left to right; never empty.
  std::vector<std::string> buttons;
  /// Into `buttons`. The default is the last one unless the script says otherwise.
  std::size_t defaultButton = 0;
  std::optional<std::size_t> cancelButton;

  friend bool operator==(const ScriptAlert&, const ScriptAlert&) = default;
};

/// What a script can do to the world around it. Each operation returns when it is done and throws
/// `ScriptError` when it cannot do it. Main thread.
class ScriptHost {
 public:
  virtual ~ScriptHost() = default;

  /// Brings an application to the front, starting it where needed.
  virtual void activate(const ScriptApplication& application) = 0;
  virtual void quit(const ScriptApplication& application) = 0;
  /// Opens a new, empty document in an application that edits some.
  virtual void makeNewDocument(const ScriptApplication& application) = 0;
  /// Types UTF-8 text into the program in front, as by keys. Control characters stand for the keys
  /// that send them, 28 to 31 for the arrows.
  virtual void keystroke(const std::string& text, EventFlags modifiers) = 0;
  /// Presses and releases a virtual key of the program in front.
  virtual void keyCode(std::uint16_t keyCode, EventFlags modifiers) = 0;
  /// Chooses an entry of a program's menus, as by a click of its user; what that sets off may go on
  /// afterwards.
  virtual void click(const ScriptElement& element) = 0;
  virtual bool exists(const ScriptElement& element) = 0;
  virtual bool isEnabled(const ScriptElement& element) = 0;
  /// The names of all that `element` stands for, in their order; empty for what has none.
  virtual std::vector<std::string> namesOf(const ScriptElement& element) = 0;
  /// Shows a pane of the system's settings, or a place in it.
  virtual void reveal(const ScriptElement& element) = 0;
  /// Runs a command of the shell to its end and answers what it has written, as it is. A command
  /// that fails throws its exit status as the number.
  virtual std::string doShellScript(const std::string& command) = 0;
  /// Asks the user; answers the index of the pressed button, none when the question was taken back.
  virtual std::optional<std::size_t> displayAlert(const ScriptAlert& alert) = 0;
  virtual void delay(TimeInterval seconds) = 0;
};

}  // namespace qb
