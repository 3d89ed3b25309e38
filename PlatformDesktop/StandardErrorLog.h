#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>

#include "QuillboxCommon/Log.h"

namespace qb {

/// The system log by way of standard error, whose lines a session's journal takes and stamps. It
/// is the log while it lives. Any thread.
class StandardErrorLog : public LogSink {
 public:
  StandardErrorLog() { setLogSink(this); }
  ~StandardErrorLog() override { setLogSink(nullptr); }

  void write(std::string_view text) override {
    // In one piece, so that entries of several threads do not mix.
    const std::string line = std::string(text) + '\n';
    std::string_view rest = line;
    while (!rest.empty()) {
      const ssize_t written = ::write(STDERR_FILENO, rest.data(), rest.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return;
      rest.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  bool standardErrorIsTerminal() const override { return isatty(STDERR_FILENO) == 1; }
};

}  // namespace qb
