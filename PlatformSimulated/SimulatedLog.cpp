#include "PlatformSimulated/SimulatedLog.h"

namespace qb {

SimulatedLog::SimulatedLog() : previous_(qb::logSink()) { setLogSink(this); }

SimulatedLog::~SimulatedLog() { setLogSink(previous_); }

void SimulatedLog::write(std::string_view text) {
  const std::lock_guard lock(mutex_);
  entries_.emplace_back(text);
}

std::vector<std::string> SimulatedLog::entries() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

void SimulatedLog::clear() {
  const std::lock_guard lock(mutex_);
  entries_.clear();
}

}  // namespace qb
