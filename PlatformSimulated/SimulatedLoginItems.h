#pragma once

#include <string>
#include <vector>

#include "Platform/LoginItems.h"

namespace qb {

/// The login items in memory. Two entries may start the same program, as a user can bring about.
class SimulatedLoginItems : public LoginItems {
 public:
  std::vector<LoginItem> snapshot() const override { return items_; }
  bool insertItemLast(const std::string& path) override {
    if (insertionsFail_) return false;
    items_.push_back({"item-" + std::to_string(++lastNumber_), path});
    return true;
  }
  bool remove(const LoginItem& item) override { return std::erase(items_, item) != 0; }

  /// While set, no entry can be added.
  void setInsertionsFail(bool fail) { insertionsFail_ = fail; }
  /// The programs that would start, in order.
  std::vector<std::string> paths() const {
    std::vector<std::string> all;
    for (const LoginItem& item : items_) all.push_back(item.path);
    return all;
  }

 private:
  std::vector<LoginItem> items_;
  int lastNumber_ = 0;
  bool insertionsFail_ = false;
};

}  // namespace qb
