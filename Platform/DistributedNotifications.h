#pragma once

#include <functional>
#include <string>

#include "QuillboxCommon/Subscription.h"

namespace qb {

/// News between the programs of one session: a name and the object it comes from, nothing more.
/// Where the session has no way to carry them, posts are dropped and nobody is ever told; the
/// platform logs that once. Nothing here waits for another program. Main thread.
class DistributedNotifications {
 public:
  virtual ~DistributedNotifications() = default;
  /// Tells all observers in the session, those of this program among them, in a later pass of the
  /// loop.
  virtual void post(const std::string& name, const std::string& object) = 0;
  /// Calls `handler` for each notification of that name and object, from now until the answer goes.
  /// An empty object stands for any.
  [[nodiscard]] virtual Subscription addObserver(const std::string& name, const std::string& object,
                                                 std::function<void()> handler) = 0;
};

}  // namespace qb
