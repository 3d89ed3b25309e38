#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Development aid: counts live instances by class. One shared object, made on first use. Only
/// when standard error is a terminal does it display its counts, every 3 seconds. A class with an
/// empty description is ignored by every operation. Main thread.
class AllocationManager {
 public:
  ~AllocationManager();
  AllocationManager(const AllocationManager&) = delete;
  AllocationManager& operator=(const AllocationManager&) = delete;

  static void registerAllocationOfClass(const std::string& description);
  /// Never takes a count below 0.
  static void registerDeallocationOfClass(const std::string& description);
  static void registerIntendedSingletonClass(const std::string& description);
  /// Expects `shouldBe` live instances from now on.
  static void allocationCountForClass(const std::string& description, std::int32_t shouldBe);
  /// Logs the counts, then what speaks against the singletons and the expectations.
  static void displayAllocations();

  /// The live count, or -1 for a class that was never counted.
  static std::int32_t countForClass(const std::string& description);
  /// Drops the shared object; the next use makes another. For tests.
  static void reset();

 private:
  AllocationManager();
  static std::unique_ptr<AllocationManager>& instance();
  static AllocationManager& shared();
  void resetTimer();
  void display() const;

  std::map<std::string, std::int32_t> allocations_;
  std::map<std::string, std::int32_t> expectedAllocationCounts_;
  std::vector<std::string> intendedSingletonClasses_;
  std::shared_ptr<RunLoopTimer> displayTimer_;
  bool runningAsDeveloper_;
};

}  // namespace qb
