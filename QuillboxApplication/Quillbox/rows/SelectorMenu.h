#pragma once

#include <memory>
#include <string>

#include "QuillboxCommon/views/Menu.h"

namespace qb {

class HostView;
class TabRow;
struct Event;

/// What the selector menu of every row has below the kinds of contents. Main thread.
class SelectorMenu {
 public:
  explicit SelectorMenu(HostView& host) : host_(host) {}

  /// `event` is the one that opens the menu.
  void augment(Menu& menu, TabRow& tabRow, const Event& event) const;

  static void openSettings();
  static void openQuickStartGuide();
  static void quitQuillbox();
  static void restartQuillbox();

 private:
  struct DefaultEntry;

  void addDefaultEntry(Menu& menu, TabRow& tabRow, const DefaultEntry& entry) const;
  void addEntry(Menu& menu, const char* title, const char* action, void (*perform)()) const;
  /// An action of the host view.
  MenuItem::Action action(std::string name, std::function<void(MenuItem&)> perform) const;

  HostView& host_;
};

}  // namespace qb
