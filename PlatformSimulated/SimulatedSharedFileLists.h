#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Platform/SharedFileLists.h"

namespace qb {

/// The lists in memory. What is started goes to the front of the recent applications.
class SimulatedSharedFileLists : public SharedFileLists {
 public:
  std::vector<SharedFileListItem> snapshot(SharedFileList /*list*/) const override {
    return items_;
  }
  Subscription addObserver(SharedFileList /*list*/, Block changed) override {
    const int number = ++lastNumber_;
    observers_.emplace(number, std::move(changed));
    return Subscription([this, number] { observers_.erase(number); });
  }

  /// For the desktop: an application was started.
  void noteStart(const std::string& name, const std::string& path) {
    std::erase_if(items_, [&](const SharedFileListItem& item) { return item.path == path; });
    items_.insert(items_.begin(), {name, path});
    noteChange();
  }
  void setItems(std::vector<SharedFileListItem> items) {
    items_ = std::move(items);
    noteChange();
  }
  std::size_t numberOfObservers() const { return observers_.size(); }

 private:
  void noteChange() {
    const auto observers = observers_;
    for (const auto& [number, changed] : observers) executeBlockAfterDelay(changed, 0);
  }

  std::vector<SharedFileListItem> items_;
  std::map<int, Block> observers_;
  int lastNumber_ = 0;
};

}  // namespace qb
