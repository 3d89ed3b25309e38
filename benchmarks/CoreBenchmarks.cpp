// What the core itself costs, under a virtual clock and with drawing that is only written down.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "PlatformSimulated/SimulatedPlatform.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/QuillboxAction.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/RunLoop.h"
#include "support/LaunchedBefore.h"
#include "support/TestItems.h"

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

/// The launched program with rows of test items above the row of applications.
class ProgramWithRows : public Program {
 public:
  ProgramWithRows(std::int64_t rows, std::int64_t items) : Program(0) {
    for (std::int64_t row = 0; row < rows; ++row) {
      host().createTabRowAtIndex(0, test::TestProvider::withItems(static_cast<int>(items)), true);
    }
  }
  HostView& host() const { return *appDelegate->hostView(); }
  TabRow& firstRow() const { return *host().tabRows().front(); }
  void open() {
    // A corner's panel stays without a key being held.
    appDelegate->activateApplicationWithActivationMethod(ActivationMethodCorner);
    platform.runPending();
  }
  void dismiss() {
    appDelegate->dismissApplicationWithInvocation(false, false);
    platform.runPending();
  }
};

/// An opening and its dismissal with so many rows of so many items. The items are kept in between,
/// as with sources that have not changed.
void openRows(benchmark::State& state) {
  ProgramWithRows program(state.range(0), state.range(1));
  for (auto _ : state) {
    program.open();
    program.dismiss();
  }
}
BENCHMARK(openRows)->Args({1, 30})->Args({6, 30})->Args({1, 1000})->Unit(benchmark::kMicrosecond);

/// A step to the next item; in a row of 1,000 most of them scroll.
void stepInRows(benchmark::State& state) {
  ProgramWithRows program(state.range(0), state.range(1));
  program.open();
  const QuillboxAction next = QuillboxAction::actionWithCode(QuillboxActionNextItem);
  for (auto _ : state) program.host().handleAction(next);
}
BENCHMARK(stepInRows)->Args({6, 30})->Args({1, 1000});

/// A step to the next row.
void changeRows(benchmark::State& state) {
  ProgramWithRows program(state.range(0), state.range(1));
  program.open();
  for (auto _ : state) program.host().selectNextTabRow();
}
BENCHMARK(changeRows)->Args({6, 30});

/// One step of scrolling, there and back.
void scrollRow(benchmark::State& state) {
  ProgramWithRows program(1, state.range(0));
  program.open();
  std::int64_t delta = -1;
  for (auto _ : state) {
    program.firstRow().scrollItemsBy(delta);
    delta = -delta;
  }
}
BENCHMARK(scrollRow)->Arg(30)->Arg(1000);

/// One look at the pointer that has moved within a row.
void pollPointer(benchmark::State& state) {
  ProgramWithRows program(6, state.range(0));
  program.open();
  const Rect row = program.firstRow().frame();
  double x = row.x() + 20;
  for (auto _ : state) {
    x = x < row.maxX() - 20 ? x + 3 : row.x() + 20;
    program.platform.pointer().moveTo({x, 900 - row.center().y});
    program.platform.runFor(0.05);
  }
}
BENCHMARK(pollPointer)->Arg(30)->Arg(1000);

/// One second of a resident program that nobody uses: all its timers.
void idleSecond(benchmark::State& state) {
  Program program(state.range(0));
  for (auto _ : state) program.platform.runFor(1);
}
BENCHMARK(idleSecond)->Arg(16);

}  // namespace
}  // namespace qb
