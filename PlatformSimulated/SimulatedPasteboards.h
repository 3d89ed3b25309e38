#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Pasteboards.h"

namespace qb {

/// A pasteboard in memory.
class SimulatedPasteboard : public Pasteboard {
 public:
  std::int64_t clearContents() override {
    items_.clear();
    isOfAnotherProgram_ = false;
    ++changeCount_;
    changed_.signal();
    return changeCount_;
  }
  bool setData(const PropertyList::Data& data, const std::string& type) override {
    if (writesFail_) return false;
    dropForeignContents();
    if (items_.empty()) items_.emplace_back();
    PasteboardContents& first = items_.front();
    std::erase_if(first, [&type](const auto& each) { return each.first == type; });
    first.emplace_back(type, data);
    return true;
  }
  std::optional<PropertyList::Data> dataForType(const std::string& type) const override {
    for (const auto& item : pasteboardItems()) {
      if (auto data = item->dataForType(type)) return data;
    }
    return std::nullopt;
  }
  bool writeObjects(const std::vector<const PasteboardWriting*>& objects) override {
    if (writesFail_) return false;
    std::vector<PasteboardContents> added;
    for (const PasteboardWriting* object : objects) {
      auto contents = contentsOfObject(*object, *this);
      if (!contents) return false;
      added.push_back(*std::move(contents));
    }
    dropForeignContents();
    items_.insert(items_.end(), added.begin(), added.end());
    return true;
  }
  std::vector<std::shared_ptr<const PasteboardItem>> pasteboardItems() const override {
    std::vector<std::shared_ptr<const PasteboardItem>> all;
    for (const auto& each : items_) all.push_back(std::make_shared<KeptPasteboardItem>(each));
    return all;
  }
  std::int64_t changeCount() const override { return changeCount_; }

  /// What another program puts there, one of these for each item.
  void putByAnotherProgram(std::vector<PasteboardContents> items) {
    clearContents();
    items_ = std::move(items);
    isOfAnotherProgram_ = true;
  }
  void setWritesFail(bool fail) { writesFail_ = fail; }
  ChangeNotice& changed() { return changed_; }
  const std::vector<PasteboardContents>& items() const { return items_; }

 private:
  void dropForeignContents() {
    if (std::exchange(isOfAnotherProgram_, false)) items_.clear();
  }

  std::vector<PasteboardContents> items_;
  bool isOfAnotherProgram_ = false;
  std::int64_t changeCount_ = 0;
  ChangeNotice changed_;
  bool writesFail_ = false;
};

class SimulatedPasteboards : public Pasteboards {
 public:
  std::shared_ptr<Pasteboard> generalPasteboard() override { return general_; }
  ChangeNotice& generalPasteboardChanged() override { return general_->changed(); }
  std::shared_ptr<Pasteboard> pasteboardWithName(const std::string& name) override {
    auto& pasteboard = pasteboards_[name];
    if (!pasteboard) pasteboard = std::make_shared<SimulatedPasteboard>();
    return pasteboard;
  }

  /// The clipboard, for what other programs do with it.
  SimulatedPasteboard& general() { return *general_; }

 private:
  std::shared_ptr<SimulatedPasteboard> general_ = std::make_shared<SimulatedPasteboard>();
  std::map<std::string, std::shared_ptr<SimulatedPasteboard>> pasteboards_;
};

}  // namespace qb
