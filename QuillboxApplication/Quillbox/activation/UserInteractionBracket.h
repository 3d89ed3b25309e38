#pragma once

#include "Quillbox/activation/Quillbox.h"

namespace qb {

/// A use of the keyboard by something other than the panel, for as long as it lives.
class UserInteractionBracket {
 public:
  explicit UserInteractionBracket(Quillbox& facade) : facade_(facade) {
    facade_.beginUserInteraction();
  }
  ~UserInteractionBracket() { facade_.endUserInteraction(); }
  UserInteractionBracket(const UserInteractionBracket&) = delete;
  UserInteractionBracket& operator=(const UserInteractionBracket&) = delete;

 private:
  Quillbox& facade_;
};

}  // namespace qb
