#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/ApplicationControl.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"

namespace qb {

/// This program as the desktop has it. Helper programs and the preference program lie beside its
/// own file. Once it ends it starts nothing more: work that a closed dialog goes on with is not to
/// bring it back.
class DesktopApplicationControl : public ApplicationControl {
 public:
  /// The host must outlive it.
  explicit DesktopApplicationControl(QtRunLoopHost& runLoopHost);

  std::string bundlePath() const override { return bundlePath_; }
  std::string shortVersionString() const override;
  std::string humanReadableCopyright() const override;
  std::string textResource(const std::string& name, const std::string& type) const override;
  std::string operatingSystemVersionString() const override;
  bool launchAppWithBundleIdentifier(const std::string& identifier, std::uint32_t options) override;
  bool openFile(const std::string& path) override;
  bool openFile(const std::string& path, const std::string& withApplication) override;
  bool openURL(const std::string& url) override;
  /// Also ends what keeps the main loop from ending: open menus and modal dialogs.
  void terminate() override;
  /// `terminate` has been called; it may have been before the main loop ran.
  bool isTerminating() const { return isTerminating_; }

  /// Opens what is an application, by bringing it forward or starting it; answers false for
  /// everything else. An empty one opens none.
  void setApplicationOpener(std::function<bool(const std::string& path)> opener) {
    openApplication_ = std::move(opener);
  }
  /// Opens a file with the program of that name; answers false when there is none. An empty one
  /// knows no programs.
  using DocumentOpener =
      std::function<bool(const std::string& path, const std::string& application)>;
  void setDocumentOpener(DocumentOpener opener) { openDocument_ = std::move(opener); }
  /// Starts the preference program, or brings its window forward. `page` may be empty.
  bool openPreferences(const std::string& page) const;

 private:
  bool start(const std::vector<std::string>& words, const std::string& folder) const;
  bool openByDesktop(const std::string& document) const;
  std::string programBeside(const std::string& name) const;
  bool launchRelauncher() const;

  QtRunLoopHost& runLoopHost_;
  std::string bundlePath_;
  bool isTerminating_ = false;
  std::function<bool(const std::string&)> openApplication_;
  DocumentOpener openDocument_;
};

}  // namespace qb
