#pragma once

#include <map>
#include <memory>
#include <string>

#include "Platform/Pasteboards.h"

namespace qb {

/// A pasteboard in memory.
class SimulatedPasteboard : public Pasteboard {
 public:
  std::int64_t clearContents() override {
    contents_.clear();
    return ++changeCount_;
  }
  bool setData(const PropertyList::Data& data, const std::string& type) override {
    contents_[type] = data;
    return true;
  }
  std::optional<PropertyList::Data> dataForType(const std::string& type) const override {
    const auto found = contents_.find(type);
    return found == contents_.end() ? std::nullopt : std::optional(found->second);
  }
  std::int64_t changeCount() const override { return changeCount_; }

 private:
  std::map<std::string, PropertyList::Data> contents_;
  std::int64_t changeCount_ = 0;
};

class SimulatedPasteboards : public Pasteboards {
 public:
  std::shared_ptr<Pasteboard> pasteboardWithName(const std::string& name) override {
    auto& pasteboard = pasteboards_[name];
    if (!pasteboard) pasteboard = std::make_shared<SimulatedPasteboard>();
    return pasteboard;
  }

 private:
  std::map<std::string, std::shared_ptr<SimulatedPasteboard>> pasteboards_;
};

}  // namespace qb
