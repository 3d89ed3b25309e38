#pragma once

#include "Platform/Trash.h"

namespace qb {

/// The trash that the desktop's file managers show.
class DesktopTrash : public Trash {
 public:
  void recycle(std::vector<std::string> paths, Completion completion) override;
};

}  // namespace qb
