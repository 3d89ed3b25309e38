#pragma once

#include <vector>

#include "Platform/Sharing.h"

namespace qb {

/// Keeps what it is given. There is a mail program, unless it has been removed.
class SimulatedSharing : public Sharing {
 public:
  bool composeEmail(const EmailMessage& message) override {
    composed_.push_back(message);
    return hasMailProgram_;
  }

  void removeMailProgram() { hasMailProgram_ = false; }
  /// Every message, those that no program took too.
  const std::vector<EmailMessage>& composed() const { return composed_; }

 private:
  bool hasMailProgram_ = true;
  std::vector<EmailMessage> composed_;
};

}  // namespace qb
