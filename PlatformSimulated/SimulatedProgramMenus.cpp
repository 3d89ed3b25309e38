#include "PlatformSimulated/SimulatedProgramMenus.h"

#include <memory>

namespace qb {

class SimulatedProgramMenus::Entry : public ScriptMenuEntry {
 public:
  Entry(SimulatedProgramMenus& menus, const SimulatedMenuEntry& entry, Click place)
      : menus_(menus), entry_(entry), place_(std::move(place)) {}

  std::string name() const override { return entry_.name; }
  bool isEnabled() const override { return entry_.isEnabled; }
  ScriptMenuEntries entries() override {
    if (entry_.fillsWhenOpened) return {};
    return menus_.entriesOf(entry_.entries, place_);
  }
  ScriptMenuEntries entriesOnceOpened() override {
    menus_.openings_.push_back(place_);
    return menus_.entriesOf(entry_.entries, place_);
  }
  bool click() override {
    if (!entry_.refuses) menus_.clicks_.push_back(place_);
    return !entry_.refuses;
  }

 private:
  SimulatedProgramMenus& menus_;
  const SimulatedMenuEntry& entry_;
  Click place_;
};

std::optional<ScriptMenuEntries> SimulatedProgramMenus::menuBarOf(
    const ScriptApplication& process) {
  const auto number = find(process);
  const auto bar = number ? menuBars_.find(number->lowLongOfPSN) : menuBars_.end();
  if (bar == menuBars_.end()) return std::nullopt;
  return entriesOf(bar->second, {*number, ""});
}

std::optional<ProcessSerialNumber> SimulatedProgramMenus::find(
    const ScriptApplication& application) const {
  std::optional<ProcessSerialNumber> found;
  for (const auto& process : processes_.processes()) {
    const ProcessInformation& information = process.information;
    const std::string& name =
        application.byIdentifier ? information.bundleIdentifier : information.name;
    if (name != application.name) continue;
    const ProcessSerialNumber number = information.processNumber;
    if (!found || number == processes_.frontClient()) found = number;
  }
  return found;
}

ScriptMenuEntries SimulatedProgramMenus::entriesOf(const std::vector<SimulatedMenuEntry>& entries,
                                                   const Click& menu) {
  ScriptMenuEntries made;
  for (const SimulatedMenuEntry& entry : entries) {
    std::string path = menu.path.empty() ? entry.name : menu.path + ':' + entry.name;
    made.push_back(std::make_unique<Entry>(*this, entry, Click{menu.process, std::move(path)}));
  }
  return made;
}

}  // namespace qb
