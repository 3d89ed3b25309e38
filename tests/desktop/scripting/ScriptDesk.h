#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <memory>
#include <string>
#include <vector>

#include "PlatformDesktop/input/DesktopInput.h"
#include "PlatformDesktop/processes/ApplicationCatalogue.h"
#include "PlatformDesktop/processes/DesktopProcesses.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "PlatformDesktop/scripting/DesktopScripts.h"
#include "PlatformDesktop/session/DesktopApplicationControl.h"

namespace qb::test {

/// Dialogs whose user answers at once.
class PromptDialogs : public Dialogs {
 public:
  std::int32_t runModal(Alert& alert) override {
    shown.push_back(alert);
    return answer;
  }
  std::optional<std::vector<std::string>> runModal(const OpenPanel&) override {
    return std::nullopt;
  }
  void beep() override {}
  std::vector<Alert> shown;
  std::int32_t answer = AlertFirstButtonReturn;
};

/// Another program with a window, which tells what it gets.
class ScriptClient {
 public:
  /// The recording client.
  explicit ScriptClient(const std::string& windowClass);
  ScriptClient(const QString& program, const QStringList& arguments);
  ~ScriptClient();
  std::int32_t pid() const { return static_cast<std::int32_t>(process_.processId()); }
  /// Waits until it has told a line; false when that takes much too long.
  bool tells(const std::string& line);
  /// The text that it has got so far.
  std::string text();

 private:
  QProcess process_;
  QByteArray told_;
};

/// Scripts on a desktop with these applications installed: "Plain", "Term", a terminal, "Files",
/// the file manager, and "Control", the system's settings. All of them are plain windows. "Mute" is
/// one that shows nothing when it is started.
class ScriptDesk : public ::testing::Test {
 protected:
  ScriptDesk();
  ~ScriptDesk() override;

  ScriptOutcome run(const std::string& source) { return scripts.executeAndReturnError(source); }
  /// Empty for a script that came to its end.
  std::string errorOf(const std::string& source);
  /// An instance that is in front.
  std::unique_ptr<ScriptClient> startClient(const std::string& windowClass);
  void waitUntilInFront(const ScriptClient& client);
  bool waitFor(const std::function<bool()>& condition);
  std::string nameOfFrontProgram();
  /// Programs that scripts have started.
  std::vector<ProcessSerialNumber> programs() { return processes.running(); }

  QtRunLoopHost host;
  RunLoop loop{host};
  ApplicationCatalogue catalogue{host};
  DesktopProcesses processes;
  DesktopApplicationControl application{host};
  PromptDialogs dialogs;
  DesktopScripts scripts{{application, catalogue, processes, dialogs}};
  std::unique_ptr<DesktopInput> input;
};

}  // namespace qb::test
