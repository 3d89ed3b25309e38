#include "QuillboxCommon/views/Text.h"

namespace qb {

std::string AttributedString::string() const {
  std::string all;
  for (const Run& run : runs_) all += run.text;
  return all;
}

}  // namespace qb
