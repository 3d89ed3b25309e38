#pragma once

#include <optional>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

class AppDelegate;

/// The object and the names of the preference program's notifications.
inline constexpr const char* quillboxPreferencesObject = "com.vorlane.quillboxPreferences";
inline constexpr const char* settingsChangedNotification = "Settings Changed";
inline constexpr const char* previewQuillboxNotification = "Preview Quillbox";

/// Listens to the preference program. What was changed stands in the settings' file. Main thread.
class PreferenceNotifications {
 public:
  explicit PreferenceNotifications(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}

  void addObservers();
  void removeObservers();
  void settingsChangedInPreferencePane();
  /// Raises the panel. The first time in five minutes it tells how to leave again, and gives a
  /// second to read that.
  void previewQuillboxSettings();

 private:
  AppDelegate& appDelegate_;
  Subscription settingsChanged_, preview_;
  std::optional<Date> lastPreview_;
};

}  // namespace qb
