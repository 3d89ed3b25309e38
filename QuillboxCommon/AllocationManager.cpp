#include "QuillboxCommon/AllocationManager.h"

#include <algorithm>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

constexpr TimeInterval displayInterval = 3.0;

}  // namespace

AllocationManager::AllocationManager()
    : runningAsDeveloper_(logSink() != nullptr && logSink()->standardErrorIsTerminal()) {
  resetTimer();
}

AllocationManager::~AllocationManager() {
  if (displayTimer_) displayTimer_->invalidate();
}

std::unique_ptr<AllocationManager>& AllocationManager::instance() {
  static std::unique_ptr<AllocationManager> manager;
  return manager;
}

AllocationManager& AllocationManager::shared() {
  auto& manager = instance();
  if (!manager) manager.reset(new AllocationManager);
  return *manager;
}

void AllocationManager::reset() { instance().reset(); }

void AllocationManager::registerAllocationOfClass(const std::string& description) {
  if (description.empty()) return;
  ++shared().allocations_[description];
}

void AllocationManager::registerDeallocationOfClass(const std::string& description) {
  if (description.empty()) return;
  auto& allocations = shared().allocations_;
  const auto entry = allocations.find(description);
  if (entry != allocations.end() && entry->second != 0) --entry->second;
}

void AllocationManager::registerIntendedSingletonClass(const std::string& description) {
  if (description.empty()) return;
  shared().intendedSingletonClasses_.push_back(description);
}

void AllocationManager::allocationCountForClass(const std::string& description,
                                                std::int32_t shouldBe) {
  if (description.empty()) return;
  shared().expectedAllocationCounts_[description] = shouldBe;
  shared().resetTimer();
}

std::int32_t AllocationManager::countForClass(const std::string& description) {
  const auto& allocations = shared().allocations_;
  const auto entry = allocations.find(description);
  return entry != allocations.end() ? entry->second : -1;
}

void AllocationManager::displayAllocations() { shared().display(); }

void AllocationManager::resetTimer() {
  if (!runningAsDeveloper_) return;
  if (displayTimer_) displayTimer_->invalidate();
  displayTimer_ = RunLoop::main().scheduleTimer(displayInterval, true,
                                                [](RunLoopTimer&) { displayAllocations(); });
}

void AllocationManager::display() const {
  std::string text =
      "\r\n\r\n-------------------------- Displaying Allocations -----------------------\r\n";
  for (const auto& [description, count] : allocations_) {
    if (count > 0) text += stringWithFormat("%@: %i\r", description, count);
  }
  text += "-------------------------------------------------------------------------\r\n";
  log(text);

  for (const auto& [description, count] : allocations_) {
    const auto& singletons = intendedSingletonClasses_;
    if (count <= 1 ||
        std::find(singletons.begin(), singletons.end(), description) == singletons.end()) {
      continue;
    }
    log(stringWithFormat("Allocation Manager: \r\nSingleton Class '%@' has %i instances allocated.",
                         description, count));
  }

  for (const auto& [description, count] : allocations_) {
    const auto expected = expectedAllocationCounts_.find(description);
    if (expected == expectedAllocationCounts_.end() || expected->second == count) continue;
    log(
        stringWithFormat("There are %i instances of %@ while there should only be %i.  If you just "
                         "made a change that caused this, undo it",
                         count, description, expected->second));
  }
}

}  // namespace qb
