#pragma once

#include <string_view>

namespace qb {

/// Where the system log goes. Unformatted lines, no levels.
class LogSink {
 public:
  virtual ~LogSink() = default;
  /// Takes one entry, which may hold several lines. Any thread.
  virtual void write(std::string_view text) = 0;
  /// True when standard error is a terminal, so a developer is watching.
  virtual bool standardErrorIsTerminal() const = 0;
};

/// Makes `sink` receive what `log` writes; null drops it. The sink must outlive its stay.
void setLogSink(LogSink* sink);
LogSink* logSink();

/// Writes one entry to the system log. Any thread.
void log(std::string_view text);

}  // namespace qb
