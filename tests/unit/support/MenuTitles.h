#pragma once

#include <memory>
#include <string>
#include <vector>

#include "QuillboxCommon/views/Menu.h"

namespace qb::test {

/// The titles of menu items, with "-" for a separator.
inline std::vector<std::string> titlesOf(const std::vector<std::shared_ptr<MenuItem>>& items) {
  std::vector<std::string> titles;
  for (const auto& item : items) titles.push_back(item->isSeparatorItem() ? "-" : item->title());
  return titles;
}

}  // namespace qb::test
