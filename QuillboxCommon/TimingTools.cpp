#include "QuillboxCommon/TimingTools.h"

#include <map>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

std::map<std::string, Moment>& startMoments() {
  static std::map<std::string, Moment> moments;
  return moments;
}

}  // namespace

void TimingTools::startTimer(const std::string& name) {
  startMoments()[name] = RunLoop::main().now();
}

double TimingTools::endTimer(const std::string& name) {
  const auto entry = startMoments().extract(name);
  if (!entry) return 0.0;
  const TimeInterval seconds = RunLoop::main().now() - entry.mapped();
  log(stringWithFormat("Timer --------------- %@ took %f seconds", name, seconds));
  return seconds;
}

}  // namespace qb
