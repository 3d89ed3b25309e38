#pragma once

#include <string>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

class Quillbox;

/// Opens the product's own settings, panes of the system's, and the place where access is granted.
/// Main thread.
class PreferencePanes {
 public:
  explicit PreferencePanes(Quillbox& facade) : facade_(facade) {}

  /// With a delay of 0, at once.
  void openQuillboxSettingsAfterDelay(TimeInterval delay);
  void openPreferencePaneAtPath(const std::string& path);
  /// 1 explains beside it how to grant access, 2 how to grant it anew, 0 nothing.
  void openAccessibilitySettingsWithOption(int option);
  void showEnableAssistiveDevicesHelpWithOption(int option);

 private:
  void openQuillboxSettings();

  Quillbox& facade_;
};

}  // namespace qb
