#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/Log.h"

namespace qb::test {

/// Keeps what is logged while it lives.
class RecordingLog : public LogSink {
 public:
  explicit RecordingLog(bool isTerminal = false) : isTerminal_(isTerminal) { setLogSink(this); }
  ~RecordingLog() override { setLogSink(nullptr); }

  void write(std::string_view text) override { entries.emplace_back(text); }
  bool standardErrorIsTerminal() const override { return isTerminal_; }

  std::vector<std::string> entries;

 private:
  bool isTerminal_;
};

}  // namespace qb::test
