#include "QuillboxCommon/views/Text.h"

#include <algorithm>

#include "QuillboxCommon/Utf8.h"

namespace qb {

std::string AttributedString::string() const {
  std::string all;
  for (const Run& run : runs_) all += run.text;
  return all;
}

std::size_t AttributedString::length() const {
  std::size_t count = 0;
  for (const Run& run : runs_) count += numberOfCharacters(run.text);
  return count;
}

AttributedString AttributedString::attributedSubstringFromRange(std::size_t location,
                                                                std::size_t length) const {
  AttributedString part;
  for (const Run& run : runs_) {
    if (length == 0) break;
    const std::size_t skipped = std::min(location, numberOfCharacters(run.text));
    location -= skipped;
    const std::string_view rest =
        std::string_view(run.text).substr(firstCharacters(run.text, skipped).size());
    const std::string_view taken = firstCharacters(rest, length);
    if (taken.empty()) continue;
    length -= numberOfCharacters(taken);
    part.append(std::string(taken), run.font, run.color);
  }
  return part;
}

}  // namespace qb
