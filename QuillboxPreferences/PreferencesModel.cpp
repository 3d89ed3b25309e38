#include "QuillboxPreferences/PreferencesModel.h"

#include <QDir>
#include <QFileInfo>
#include <string>
#include <utility>

#include "Platform/Accessibility.h"
#include "Quillbox/activation/AccessibilityAccess.h"
#include "Quillbox/activation/PreferenceNotifications.h"

namespace qb {

namespace {

/// A slider that is dragged changes its value at every step of the pointer.
constexpr int writeDelayInMilliseconds = 60;

}  // namespace

PreferencesModel::PreferencesModel() : settings_(Settings::sharedSettings(fileSystem_)) {
  writeTimer_.setSingleShot(true);
  writeTimer_.setInterval(writeDelayInMilliseconds);
  connect(&writeTimer_, &QTimer::timeout, this, [this] { flush(); });

  // Both files are replaced when they change, so it is their folders that are watched.
  const QString settingsFolder =
      QFileInfo(QString::fromStdString(settings_->pathToSettingsFile())).path();
  const QString pasteboardFolder = QString::fromStdString(pasteboards_.folder());
  for (const QString& folder : {settingsFolder, pasteboardFolder}) {
    QDir().mkpath(folder);
    watcher_.addPath(folder);
  }
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { readAgain(); });
}

PreferencesModel::~PreferencesModel() { flush(); }

void PreferencesModel::readAgain() {
  settings_->load();
  for (const Change& change : pending_) change(*settings_);
  for (const auto& observer : observers_) observer();
}

void PreferencesModel::change(Change change) {
  change(*settings_);
  pending_.push_back(std::move(change));
  if (!writeTimer_.isActive()) writeTimer_.start();
}

void PreferencesModel::flush() {
  writeTimer_.stop();
  if (pending_.empty()) return;
  // The resident program may have saved a setting of its own in the meantime.
  settings_->load();
  for (const Change& change : std::exchange(pending_, {})) change(*settings_);
  settings_->save();
  notifications_.post(settingsChangedNotification, quillboxPreferencesObject);
}

void PreferencesModel::preview() {
  flush();
  notifications_.post(previewQuillboxNotification, quillboxPreferencesObject);
}

std::optional<bool> PreferencesModel::publishedAccess() {
  const auto data = pasteboards_.pasteboardWithName(std::string(quillboxInformationPasteboard))
                        ->dataForType(std::string(QuillboxInformationType));
  const auto information = data ? archiver_.unarchiveObjectWithData(*data) : std::nullopt;
  if (!information) return std::nullopt;
  return information->boolForKey(QuillboxInformationHasAccessibilityAccessKey);
}

bool PreferencesModel::inputIsAllowed() const {
  return !userDefaults_.boolForKey(kInputAccessIsDeniedKey);
}

void PreferencesModel::setInputIsAllowed(bool allowed) {
  userDefaults_.setObject(!allowed, kInputAccessIsDeniedKey);
}

bool PreferencesModel::inputFollowsDesktop() const {
  return userDefaults_.boolForKey(kInputAccessFollowsDesktopKey);
}

void PreferencesModel::setInputFollowsDesktop(bool follows) {
  userDefaults_.setObject(follows, kInputAccessFollowsDesktopKey);
}

}  // namespace qb
