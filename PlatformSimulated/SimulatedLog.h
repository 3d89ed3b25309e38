#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/Log.h"

namespace qb {

/// The system log as a list; it receives what is logged while it lives.
class SimulatedLog : public LogSink {
 public:
  SimulatedLog();
  ~SimulatedLog() override;

  void write(std::string_view text) override;
  bool standardErrorIsTerminal() const override { return standardErrorIsTerminal_; }

  /// One member for each entry.
  std::vector<std::string> entries() const;
  void clear();
  /// Whether a developer is watching; nobody is at first.
  void setStandardErrorIsTerminal(bool isTerminal) { standardErrorIsTerminal_ = isTerminal; }

 private:
  LogSink* previous_;
  mutable std::mutex mutex_;
  std::vector<std::string> entries_;
  bool standardErrorIsTerminal_ = false;
};

}  // namespace qb
