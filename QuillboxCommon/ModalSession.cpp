#include "QuillboxCommon/ModalSession.h"

#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

ModalSession* innermost = nullptr;

}  // namespace

ModalSession::ModalSession() : outer_(innermost) { innermost = this; }

ModalSession::~ModalSession() { innermost = outer_; }

std::int32_t ModalSession::run() {
  RunLoop::main().runInMode(RunLoopMode::ModalPanel, [this] { return isStopped(); });
  return *response_;
}

void ModalSession::stop(std::int32_t response) {
  if (!response_) response_ = response;
}

void ModalSession::abortModal() {
  if (innermost != nullptr) innermost->stop(ModalResponseAbort);
}

ModalSession* ModalSession::current() { return innermost; }

}  // namespace qb
