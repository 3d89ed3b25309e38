#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Platform/ApplicationControl.h"

namespace qb {

/// This program as the desktop has it. Helper programs and the preference program lie beside its
/// own file.
class DesktopApplicationControl : public ApplicationControl {
 public:
  DesktopApplicationControl();

  std::string bundlePath() const override { return bundlePath_; }
  std::string shortVersionString() const override;
  std::string operatingSystemVersionString() const override;
  bool launchAppWithBundleIdentifier(const std::string& identifier, std::uint32_t options) override;
  bool openFile(const std::string& path) override;
  bool openURL(const std::string& url) override;
  void terminate() override;

  /// Starts the preference program, or brings its window forward. `page` may be empty.
  bool openPreferences(const std::string& page) const;

 private:
  std::string programBeside(const std::string& name) const;
  bool launchRelauncher() const;

  std::string bundlePath_;
};

}  // namespace qb
