#pragma once

#include <cstdint>
#include <memory>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

class AppDelegate;

/// Looks after the tap once a second, in menus and under alerts too: makes it anew when access has
/// been granted or it is no longer served everywhere, and enables it when it has been disabled.
/// Tells the user when access comes or goes, and takes back what no longer holds.
/// While all is well it rests until the platform tells of a change.
class UtilityTimer {
 public:
  explicit UtilityTimer(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}
  ~UtilityTimer();
  UtilityTimer(const UtilityTimer&) = delete;
  UtilityTimer& operator=(const UtilityTimer&) = delete;

  void installUtilityTimer();
  void cancelUtilityTimer();
  void utilityTimer();

 private:
  void tick(RunLoopTimer& timer);
  bool hasNothingToDo() const;
  /// An alert that has been shown no longer holds. From then on whatever is modal at a tick ends,
  /// be it that alert or not. Intended.
  bool abortsAlerts(bool access) const;
  std::uint64_t changes() const;

  enum class LastAccess : std::int8_t { Unknown = -1, None = 0, Granted = 1 };

  AppDelegate& appDelegate_;
  std::shared_ptr<RunLoopTimer> timer_;
  LastAccess lastAccess_ = LastAccess::Unknown;
};

}  // namespace qb
