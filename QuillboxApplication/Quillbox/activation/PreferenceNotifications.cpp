#include "Quillbox/activation/PreferenceNotifications.h"

#include "Platform/DistributedNotifications.h"
#include "Platform/Platform.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr TimeInterval timeToForgetPreview = 300;
constexpr TimeInterval timeToRead = 1;

}  // namespace

void PreferenceNotifications::addObservers() {
  DistributedNotifications& center = appDelegate_.platform().distributedNotifications();
  settingsChanged_ = center.addObserver(settingsChangedNotification, quillboxPreferencesObject,
                                        [this] { settingsChangedInPreferencePane(); });
  preview_ = center.addObserver(previewQuillboxNotification, quillboxPreferencesObject,
                                [this] { previewQuillboxSettings(); });
}

void PreferenceNotifications::removeObservers() {
  settingsChanged_.cancel();
  preview_.cancel();
}

void PreferenceNotifications::settingsChangedInPreferencePane() {
  appDelegate_.settings().load();
  appDelegate_.settingsChanged();
}

void PreferenceNotifications::previewQuillboxSettings() {
  RunLoop& loop = RunLoop::main();
  const Date date = loop.date();
  const bool isFirstInAWhile = !lastPreview_ || date - *lastPreview_ > timeToForgetPreview;
  lastPreview_ = date;
  if (isFirstInAWhile) {
    quillbox->displayQuillboxNotification("Press ESC to exit Preview", timeToRead);
    loop.runUntilDate(loop.now() + timeToRead);
  }
  appDelegate_.activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
}

}  // namespace qb
