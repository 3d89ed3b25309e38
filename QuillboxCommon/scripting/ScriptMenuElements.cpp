#include "QuillboxCommon/scripting/ScriptMenuElements.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "QuillboxCommon/TextComparison.h"

namespace qb {

namespace {

using Step = ScriptElement::Step;
using Selection = ScriptElement::Selection;

constexpr std::string_view dots = "...";
constexpr std::string_view ellipsis = "\u2026";

std::string withEllipsis(std::string name) {
  if (name.ends_with(dots)) name.replace(name.size() - dots.size(), dots.size(), ellipsis);
  return name;
}

bool looksLike(const std::string& name, const std::string& other) {
  return caseInsensitiveCompare(withEllipsis(name), withEllipsis(other)) == 0;
}

/// The place that an index means; the number of entries for one that means none.
std::size_t placeOf(const std::string& index, std::size_t count) {
  std::int64_t number = 0;
  const char* const end = index.data() + index.size();
  const auto size = static_cast<std::int64_t>(count);
  if (std::from_chars(index.data(), end, number).ptr != end) return count;
  if (number < 0) number += size + 1;
  return number >= 1 && number <= size ? static_cast<std::size_t>(number - 1) : count;
}

/// The first that the step means; null for none. Taken out of `entries`.
std::unique_ptr<ScriptMenuEntry> taken(ScriptMenuEntries entries, const Step& step) {
  const auto named = [&](const auto& isSame) {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) {
      return isSame(entry->name(), step.selector);
    });
    return static_cast<std::size_t>(found - entries.begin());
  };
  std::size_t place = entries.size();
  if (step.selection == Selection::Index) place = placeOf(step.selector, entries.size());
  if (step.selection == Selection::Name) {
    place = named(std::equal_to<>());
    if (place == entries.size()) place = named(looksLike);
  }
  return place == entries.size() ? nullptr : std::move(entries[place]);
}

/// Goes from the program inwards, step by step.
class Walk {
 public:
  enum class Reach : std::uint8_t {
    /// What a program shows by itself.
    Present,
    /// Also what it has only in an open menu.
    Opened,
  };
  Walk(ScriptMenus& menus, const ScriptElement& element, Reach reach)
      : menus_(menus), reach_(reach) {
    passed_.application = element.application;
    for (const Step& step : element.path) {
      passed_.path.push_back(step);
      take(step);
    }
  }

  /// The entry at the end of the path; null when it leads to something else.
  ScriptMenuEntry* entry() const { return place_ == Place::Entry ? entry_.get() : nullptr; }
  /// What the path ends in when it means every entry.
  const ScriptMenuEntries& every() const { return every_; }

 private:
  enum class Place : std::uint8_t { Outside, Process, MenuBar, Entry, Menu, Every };

  void take(const Step& step) {
    if (step.elementClass == "process") return takeProcess(step);
    if (step.elementClass == "menu bar") return takeMenuBar(step);
    if (step.elementClass == "menu bar item") return takeEntry(step, Place::MenuBar);
    if (step.elementClass == "menu item") return takeEntry(step, Place::Menu);
    if (step.elementClass == "menu") return takeMenu(step);
    throw ScriptError{ScriptErrorNotUnderstood,
                      "Can\u2019t get " + passed_.description() +
                          ": only the menus of other programs can be reached.",
                      ""};
  }

  void takeProcess(const Step& step) {
    process_ = {step.selector, step.selection == Selection::Identifier};
    const bool isName =
        step.selection == Selection::Name || step.selection == Selection::Identifier;
    if (place_ != Place::Outside || !isName || !menus_.isRunning(process_)) fail();
    place_ = Place::Process;
  }
  void takeMenuBar(const Step& step) {
    if (place_ != Place::Process || step.selection != Selection::Index || step.selector != "1") {
      fail();
    }
    auto entries = menus_.menuBarOf(process_);
    if (!entries) fail(": it shows no menus to other programs");
    bar_ = std::move(*entries);
    place_ = Place::MenuBar;
  }
  void takeEntry(const Step& step, Place from) {
    if (place_ != from) fail();
    if (step.selection == Selection::Every) {
      every_ = from == Place::MenuBar ? std::move(bar_) : entry_->entries();
      place_ = Place::Every;
      return;
    }
    auto found = taken(from == Place::MenuBar ? std::move(bar_) : entry_->entries(), step);
    if (!found && from == Place::Menu && reach_ == Reach::Opened) {
      found = taken(entry_->entriesOnceOpened(), step);
    }
    if (!found) fail();
    entry_ = std::move(found);
    place_ = Place::Entry;
  }
  /// The menu of an entry; in a menu bar also that of the entry of the same name.
  void takeMenu(const Step& step) {
    if (place_ == Place::MenuBar && step.selection != Selection::Every) {
      takeEntry(step, Place::MenuBar);
    } else {
      const bool isOfEntry = step.selection == Selection::Index
                                 ? step.selector == "1"
                                 : step.selection == Selection::Name && entry_ &&
                                       looksLike(entry_->name(), step.selector);
      if (place_ != Place::Entry || !isOfEntry) fail();
    }
    place_ = Place::Menu;
  }

  [[noreturn]] void fail(const std::string& why = {}) const {
    throw ScriptError{ScriptErrorNoSuchObject,
                      "Can\u2019t get " + passed_.description() + why + ".", ""};
  }

  ScriptMenus& menus_;
  Reach reach_;
  /// The path as far as it has been gone, with the step at hand.
  ScriptElement passed_;
  Place place_ = Place::Outside;
  ScriptApplication process_;
  ScriptMenuEntries bar_, every_;
  /// Where the place is an entry or its menu.
  std::unique_ptr<ScriptMenuEntry> entry_;
};

[[noreturn]] void failToClick(ScriptErrorNumber number, const ScriptElement& element,
                              const std::string& why) {
  throw ScriptError{number, "Can\u2019t click " + element.description() + why + ".", ""};
}

}  // namespace

void ScriptMenuElements::click(const ScriptElement& element) {
  const Walk walk(menus_, element, Walk::Reach::Opened);
  ScriptMenuEntry* const entry = walk.entry();
  if (entry == nullptr) failToClick(ScriptErrorNotUnderstood, element, "");
  if (!entry->isEnabled()) failToClick(ScriptErrorHandlerFailed, element, ": it is disabled");
  if (!entry->click()) failToClick(ScriptErrorHandlerFailed, element, ": the program refuses");
}

bool ScriptMenuElements::exists(const ScriptElement& element) {
  try {
    const Walk walk(menus_, element, Walk::Reach::Present);
    const bool isEvery = element.path.back().selection == Selection::Every;
    return !isEvery || !walk.every().empty();
  } catch (const ScriptError& error) {
    if (error.number == ScriptErrorNoSuchObject) return false;
    throw;
  }
}

bool ScriptMenuElements::isEnabled(const ScriptElement& element) {
  const Walk walk(menus_, element, Walk::Reach::Present);
  return walk.entry() == nullptr || walk.entry()->isEnabled();
}

std::vector<std::string> ScriptMenuElements::namesOf(const ScriptElement& element) {
  const Walk walk(menus_, element, Walk::Reach::Present);
  if (walk.entry() != nullptr) return {walk.entry()->name()};
  std::vector<std::string> names;
  for (const auto& entry : walk.every()) names.push_back(entry->name());
  return names;
}

}  // namespace qb
