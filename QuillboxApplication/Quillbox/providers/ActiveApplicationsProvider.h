#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Processes.h"
#include "Quillbox/activation/KeyHandler.h"
#include "Quillbox/providers/Process.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

class RunningApplication;

/// The running applications, the most recently front one first.
///
/// It looks at the processes once a second for as long as it lives, panel or no panel, and that is
/// how the order builds up. Between two looks it is blind: a short visit to an application goes
/// unnoticed. A program that is started anew joins at the end. Main thread.
class ActiveApplicationsProvider : public TabRowProvider, public KeyHandlerTarget {
 public:
  static std::shared_ptr<TabRowProviderInformation> information();

  ActiveApplicationsProvider();
  ~ActiveApplicationsProvider() override;

  void prepareForDeallocation() override;
  bool isActiveApplicationsProvider() const override { return true; }
  bool wantsInvocationTabEvent() const override { return true; }
  std::string name() const override { return "Active Applications"; }
  std::string className() const override { return "ActiveApplicationsProvider"; }
  void noteEnvironment(const PropertyList& environment) override;
  /// Looks at the processes first. Those without a bundle count, although they get no item.
  std::int64_t numberOfItems() override;
  bool haveItemsChanged() override { return true; }
  void createItemsWithSize(Size size) override;
  void gainActiveStatus() override;
  void relinquishActiveStatus() override;
  /// A running program is nothing that others could take.
  std::int32_t dragOperationForDraggingSession(DraggingContext /*context*/) override {
    return DragOperationPrivate;
  }
  void performKeyAction(const std::string& action, const PropertyList& information) override;
  MenuItems menuItemsForConfigure() override;

  // Commands over all applications of the row. The first two end the panel.
  /// Hides every application but the one that the user is in.
  void hideAllApplications();
  /// Asks every application but the file manager to quit, without a question.
  void quitAllApplications();
  /// Turns the hiding of all background applications on or off, and explains it when it goes on.
  void hideBackgroundApplications();

  const std::vector<std::shared_ptr<Process>>& processes() const { return processes_; }

 private:
  void monitorApplications(RunLoopTimer& timer);
  /// Answers whether a process came or went; a new order alone is no change.
  bool updateProcesses();
  bool markOrAddProcess(ProcessSerialNumber number);
  bool removeProcessesThatHaveGone();
  void moveFrontProcessToHead();
  /// All running instances of the bundles in the row, each once.
  std::vector<std::shared_ptr<RunningApplication>> runningApplications() const;
  std::shared_ptr<KeyHandlerTarget> asKeyHandlerTarget();

  std::vector<std::shared_ptr<Process>> processes_;
  std::shared_ptr<RunLoopTimer> monitor_;
  ProcessSerialNumber frontProcessNumber_;
  /// The front process to be promoted was given from outside: the next look sets it right again.
  ChangeNotice environmentNoted_;
  /// Some process would not tell about itself, so it is asked again at the next look.
  bool informationIsMissing_ = false;
};

}  // namespace qb
