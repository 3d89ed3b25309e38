#pragma once

#include <cstdint>
#include <optional>

namespace qb {

/// How a modal run ended, when no button of it did.
enum ModalResponse : std::int32_t {
  ModalResponseStop = -1000,
  ModalResponseAbort = -1001,
};

/// One modal run of the main loop, in the modal-panel mode. Sessions nest, last in, first out; the
/// innermost is the one in force. Main thread.
class ModalSession {
 public:
  ModalSession();
  ~ModalSession();
  ModalSession(const ModalSession&) = delete;
  ModalSession& operator=(const ModalSession&) = delete;

  /// Runs until the session has been stopped, at once when it has been already. An outer session
  /// that is stopped under an inner one ends after that.
  std::int32_t run();
  /// The first response counts.
  void stop(std::int32_t response = ModalResponseStop);
  bool isStopped() const { return response_.has_value(); }

  /// Stops the innermost session with `ModalResponseAbort`. Nothing without one.
  static void abortModal();
  /// The innermost one, or null.
  static ModalSession* current();

 private:
  ModalSession* outer_;
  std::optional<std::int32_t> response_;
};

}  // namespace qb
