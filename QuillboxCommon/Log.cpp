#include "QuillboxCommon/Log.h"

#include <atomic>

namespace qb {

namespace {

std::atomic<LogSink*> currentSink = nullptr;

}  // namespace

void setLogSink(LogSink* sink) { currentSink = sink; }

LogSink* logSink() { return currentSink; }

void log(std::string_view text) {
  if (LogSink* const sink = currentSink) sink->write(text);
}

}  // namespace qb
