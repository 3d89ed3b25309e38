// What the core itself costs, under a virtual clock and with drawing that is only written down.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "PlatformSimulated/SimulatedPlatform.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/RunLoop.h"
#include "support/LaunchedBefore.h"

namespace qb {
namespace {

/// The launched program over `applications` running ones.
class Program {
 public:
  explicit Program(std::int64_t applications) : appDelegate(AppDelegate::create(platform)) {
    for (std::int64_t i = 0; i < applications; ++i) {
      const auto name = "Application " + std::to_string(i);
      platform.processes().launchInFront(
          {"org.example." + std::to_string(i), name, "/apps/" + name + ".desktop"});
    }
    test::noteLaunchedBefore(platform);
    appDelegate->applicationDidFinishLaunching();
    // Until the word that it is running has left the screen.
    platform.runFor(3.01);
  }
  ~Program() { appDelegate->applicationWillTerminate(); }

  std::int64_t selectedIndex() const {
    return appDelegate->hostView()->tabRows().front()->indexOfSelectedItem();
  }

  SimulatedPlatform platform;
  std::shared_ptr<AppDelegate> appDelegate;
};

/// One pass of the run loop with one deferred call in it.
void runLoopPass(benchmark::State& state) {
  SimulatedPlatform platform;
  int calls = 0;
  for (auto _ : state) {
    executeBlockAfterDelay([&calls] { ++calls; }, 0);
    platform.runPending();
  }
  if (calls != state.iterations()) state.SkipWithError("a call was lost");
}
BENCHMARK(runLoopPass);

/// From Super-Tab to a panel that is up with its content still hidden, and its dismissal.
void openAndDismiss(benchmark::State& state) {
  Program program(state.range(0));
  for (auto _ : state) {
    program.appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandTab);
    program.appDelegate->dismissApplicationWithInvocation(false, false);
    program.platform.runPending();
  }
}
BENCHMARK(openAndDismiss)->Arg(4)->Arg(16)->Arg(64);

/// A further Tab, by way of the event tap, while the panel shows.
void tabStep(benchmark::State& state) {
  Program program(state.range(0));
  auto& keyboard = program.platform.keyboard();
  keyboard.press(KeyCodeLeftCommand);
  keyboard.type(KeyCodeTab);
  program.platform.runFor(0.4);
  for (auto _ : state) {
    keyboard.type(KeyCodeTab);
    program.platform.runPending();
  }
  if (program.appDelegate->state() != ActivationStateActive)
    state.SkipWithError("the panel is gone");
}
BENCHMARK(tabStep)->Arg(4)->Arg(16)->Arg(64);

/// One second of a resident program that nobody uses: all its timers.
void idleSecond(benchmark::State& state) {
  Program program(state.range(0));
  for (auto _ : state) program.platform.runFor(1);
}
BENCHMARK(idleSecond)->Arg(16);

}  // namespace
}  // namespace qb
