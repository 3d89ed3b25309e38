#pragma once

#include <string>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

/// News of what is in folders (`FSEventStream`). Main thread.
class FileEvents {
 public:
  virtual ~FileEvents() = default;
  /// Has `changed` called when something has been created, removed, renamed or mounted in the
  /// folder at an absolute path, and when the folder itself has come or gone: it need not be there,
  /// and may go and come back. What is written into a file is no news, nor is what happens further
  /// below.
  ///
  /// `changed` is called in the default mode, `latency` seconds after the first of the changes that
  /// it has not been told of; so never more often than that.
  ///
  /// A folder that cannot be watched, for want of permission or of the system's resources, gives
  /// one line of the log and no news. Who shows it has to read it whenever it is shown.
  [[nodiscard]] virtual Subscription watchFolder(const std::string& path, TimeInterval latency,
                                                 Block changed) = 0;
};

}  // namespace qb
