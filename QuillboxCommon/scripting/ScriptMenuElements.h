#pragma once

#include <string>
#include <vector>

#include "QuillboxCommon/scripting/ScriptHost.h"
#include "QuillboxCommon/scripting/ScriptMenus.h"

namespace qb {

/// Finds what scripts say about menus ("menu item "Paste" of menu "Edit" of menu bar item "Edit" of
/// menu bar 1 of process "X"") in the menus of the programs. The operations are those of
/// `ScriptHost`, with its errors.
///
/// Entries are known by the names that users see, first to the letter, then without regard to case
/// and to how an ellipsis is written. A menu has the name of its entry, or is number 1 of it.
class ScriptMenuElements {
 public:
  /// `menus` must outlive this.
  explicit ScriptMenuElements(ScriptMenus& menus) : menus_(menus) {}

  void click(const ScriptElement& element);
  bool exists(const ScriptElement& element);
  /// Of an entry; whatever else is there counts as enabled.
  bool isEnabled(const ScriptElement& element);
  std::vector<std::string> namesOf(const ScriptElement& element);

 private:
  ScriptMenus& menus_;
};

}  // namespace qb
