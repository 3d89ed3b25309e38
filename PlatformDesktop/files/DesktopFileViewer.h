#pragma once

#include <QDBusMessage>
#include <memory>
#include <string>

#include "Platform/ApplicationControl.h"
#include "Platform/FileViewer.h"
#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

/// The file manager by the interface that file managers share on the session's bus, and the
/// previewer of the desktop that has one. Where nobody answers to these names, or there is no bus,
/// the folder or the file is opened instead. Main thread.
class DesktopFileViewer : public FileViewer {
 public:
  /// Both must outlive it.
  DesktopFileViewer(SessionBus& bus, ApplicationControl& opener) : bus_(bus), opener_(opener) {}

  void selectFile(const std::string& path) override;
  void openInformationWindow(const std::string& path) override;
  void previewFile(const std::string& path) override;

 private:
  void callFileManager(const char* method, const std::string& path);
  /// Opens `instead` when the call cannot be delivered.
  void send(const QDBusMessage& call, const std::string& instead);

  SessionBus& bus_;
  ApplicationControl& opener_;
  /// Expires with this object, for answers that come later.
  std::shared_ptr<const bool> lifeSign_ = std::make_shared<const bool>(true);
};

}  // namespace qb
