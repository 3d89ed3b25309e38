#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "PlatformDesktop/scripting/AccessibilityBus.h"
#include "PlatformDesktop/scripting/ScriptApplications.h"
#include "QuillboxCommon/scripting/ScriptError.h"
#include "QuillboxCommon/scripting/ScriptMenus.h"

namespace qb {

/// The menus of the programs on this desktop for one run of a script, as the programs show them to
/// assistive technologies.
///
/// The bus is connected to when it is first needed. A program that has not answered in time once
/// is not asked again: a script that tries over and over would block this program for as long.
/// Main thread.
class AccessibleMenus : public ScriptMenus {
 public:
  /// `pressEscape` types that key into whoever has the keyboard, to close a menu that was opened.
  /// `applications` must outlive this.
  AccessibleMenus(const ScriptApplications& applications, std::function<void()> pressEscape)
      : applications_(applications), pressEscape_(std::move(pressEscape)) {}

  bool isRunning(const ScriptApplication& process) override;
  std::optional<ScriptMenuEntries> menuBarOf(const ScriptApplication& process) override;

 private:
  class Entry;
  struct Node;
  using Objects = std::vector<AccessibleObject>;
  using Descriptions = std::vector<AccessibilityBus::Description>;
  /// What is in the menu of an entry.
  struct Content {
    Descriptions entries;
    /// The menu is a thing of its own on the bus, which its entry shows and hides in turn.
    bool isOnItsOwn = false;
    bool isShowing = false;
  };

  void connect();
  /// None when the process shows none.
  std::optional<AccessibleObject> findMenuBar(std::int32_t pid) const;
  std::optional<AccessibleObject> findMenuBarIn(const AccessibleObject& window) const;
  Descriptions childrenOf(const Objects& objects) const;
  Content contentOf(const Node& node) const;
  /// Opens the menu of an entry and those on the way to it, and answers what is in it by then.
  Content open(Node& node) const;
  void close(const Node& node) const;
  ScriptMenuEntries entriesFrom(Descriptions descriptions, const std::shared_ptr<Node>& parent);
  /// Does it, and notes whom it concerns when he does not answer in time.
  template <class Call>
  auto asked(Call call) -> decltype(call());

  const ScriptApplications& applications_;
  std::function<void()> pressEscape_;
  std::unique_ptr<AccessibilityBus> bus_;
  /// Why there is no bus, once that is known.
  std::optional<ScriptError> failure_;
  Deadline deadline_{0};
  /// Whose menus are being looked at.
  std::int32_t pid_ = 0;
  std::set<std::int32_t> hanging_;
};

}  // namespace qb
