#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Platform/ApplicationControl.h"

namespace qb {

/// This program as the tests want it: a version, helpers and files that are there or not, and a
/// record of what was asked for.
class SimulatedApplicationControl : public ApplicationControl {
 public:
  std::string bundlePath() const override { return bundlePath_; }
  std::string shortVersionString() const override { return shortVersionString_; }
  std::string humanReadableCopyright() const override { return "Copyright 2026 The Makers"; }
  std::string textResource(const std::string& name, const std::string& type) const override {
    const auto found = texts_.find(name + "." + type);
    return found != texts_.end() ? found->second : "";
  }
  std::string operatingSystemVersionString() const override {
    return operatingSystemVersionString_;
  }
  bool launchAppWithBundleIdentifier(const std::string& identifier,
                                     std::uint32_t options) override {
    launches_.push_back({identifier, options});
    return helpers_.contains(identifier);
  }
  bool openFile(const std::string& path) override {
    openedFiles_.push_back(path);
    return files_.contains(path);
  }
  bool openFile(const std::string& path, const std::string& withApplication) override {
    openedWith_.emplace_back(path, withApplication);
    return files_.contains(path);
  }
  bool openURL(const std::string& url) override {
    openedURLs_.push_back(url);
    return true;
  }
  void terminate() override { ++numberOfTerminations_; }

  void setBundlePath(std::string path) { bundlePath_ = std::move(path); }
  void setShortVersionString(std::string version) { shortVersionString_ = std::move(version); }
  void setOperatingSystemVersionString(std::string version) {
    operatingSystemVersionString_ = std::move(version);
  }
  /// `file` is the name with its type, such as "LICENSE.txt".
  void setTextResource(const std::string& file, std::string text) {
    texts_[file] = std::move(text);
  }
  /// The helper "vorlane.Quillbox-Relauncher" is there at first.
  void removeHelper(const std::string& identifier) { helpers_.erase(identifier); }

  struct Launch {
    std::string identifier;
    std::uint32_t options = 0;
    friend bool operator==(const Launch&, const Launch&) = default;
  };
  /// Every launch of a helper, those that failed too.
  const std::vector<Launch>& launches() const { return launches_; }
  /// Every `openFile`, those that failed too.
  const std::vector<std::string>& openedFiles() const { return openedFiles_; }
  /// Every file that was to be opened with a program of choice, and that program.
  const std::vector<std::pair<std::string, std::string>>& openedWith() const { return openedWith_; }
  const std::vector<std::string>& openedURLs() const { return openedURLs_; }
  int numberOfTerminations() const { return numberOfTerminations_; }

 private:
  std::string bundlePath_ = "/opt/quillbox/bin/quillbox";
  std::string shortVersionString_ = "1.0.0";
  std::string operatingSystemVersionString_ = "Version 10.9 (Build 13A603)";
  std::map<std::string, std::string> texts_{{"LICENSE.txt", "As you like it.\n"}};
  std::set<std::string> helpers_{"vorlane.Quillbox-Relauncher"};
  std::set<std::string> files_{"/Library/PreferencePanes/QuillboxPrefrences.prefPane"};
  std::vector<Launch> launches_;
  std::vector<std::string> openedFiles_;
  std::vector<std::pair<std::string, std::string>> openedWith_;
  std::vector<std::string> openedURLs_;
  int numberOfTerminations_ = 0;
};

}  // namespace qb
