#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "PlatformDesktop/files/DesktopFileSystem.h"
#include "PlatformDesktop/session/DesktopArchiver.h"
#include "PlatformDesktop/session/DesktopDistributedNotifications.h"
#include "PlatformDesktop/session/DesktopPasteboards.h"
#include "PlatformDesktop/session/DesktopUserDefaults.h"
#include "PlatformDesktop/session/SessionBus.h"
#include "Quillbox/activation/Settings.h"

namespace qb {

/// The settings as this program shows and changes them, and its link to the resident program.
class PreferencesModel : public QObject {
 public:
  using Change = std::function<void(Settings&)>;

  PreferencesModel();
  ~PreferencesModel() override;

  const Settings& settings() const { return *settings_; }
  SessionBus& bus() { return bus_; }

  /// Makes a change on top of the file's present content, saves it and tells the resident program.
  /// Changes that follow each other closely are written as one.
  void change(Change change);
  /// Writes what is pending. Harmless when there is nothing.
  void flush();
  /// Has the resident program show its panel with the present settings.
  void preview();

  /// Whether the resident program may see and take input, as it said last; none when it has never
  /// said so in this session.
  std::optional<bool> publishedAccess();
  /// The user's own switch for that.
  bool inputIsAllowed() const;
  void setInputIsAllowed(bool allowed);
  /// Whether the desktop's own switch for assistive technologies decides as well.
  bool inputFollowsDesktop() const;
  void setInputFollowsDesktop(bool follows);

  /// Calls `observer` when the settings or the access may have changed from outside.
  void addObserver(std::function<void()> observer) { observers_.push_back(std::move(observer)); }

 private:
  void readAgain();

  DesktopFileSystem fileSystem_;
  SessionBus bus_;
  DesktopDistributedNotifications notifications_{bus_};
  DesktopPasteboards pasteboards_{fileSystem_};
  DesktopUserDefaults userDefaults_{fileSystem_};
  DesktopArchiver archiver_;
  std::shared_ptr<Settings> settings_;
  std::vector<Change> pending_;
  QTimer writeTimer_;
  QFileSystemWatcher watcher_;
  std::vector<std::function<void()>> observers_;
};

}  // namespace qb
