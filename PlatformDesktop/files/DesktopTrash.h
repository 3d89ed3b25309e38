#pragma once

#include "Platform/Trash.h"

namespace qb {

/// The trash that the desktop's file managers show.
class DesktopTrash : public Trash {
 public:
  void recycle(std::vector<std::string> paths, Completion completion) override;
  bool trashItemAtPath(const std::string& path) override;
};

}  // namespace qb
