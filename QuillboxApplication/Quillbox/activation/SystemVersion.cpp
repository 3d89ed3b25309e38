#include "Quillbox/activation/SystemVersion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "Platform/ApplicationControl.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

namespace {

/// The first of the words between blanks that has a dot; an empty one when none has.
std::string_view versionWord(std::string_view words) {
  while (!words.empty()) {
    const std::size_t end = std::min(words.find(' '), words.size());
    const std::string_view word = words.substr(0, end);
    if (word.find('.') != std::string_view::npos) return word;
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  return {};
}

std::int16_t number(std::string_view text) {
  return static_cast<std::int16_t>(PropertyList(text).longValue());
}

}  // namespace

void SystemVersion::systemVersionMajor(std::int16_t* major, std::int16_t* minor,
                                       std::int16_t* revision) const {
  const std::array outputs{major, minor, revision};
  const std::string words = application_.operatingSystemVersionString();
  std::string_view rest = versionWord(words);
  if (rest.empty()) rest = "10.8.0";
  for (std::int16_t* const output : outputs) {
    const std::size_t end = rest.find('.');
    if (output != nullptr) *output = number(rest.substr(0, end));
    if (end == std::string_view::npos) return;
    rest.remove_prefix(end + 1);
  }
}

bool SystemVersion::isMountainLionOrEarlier() {
  if (!isMountainLionOrEarlier_) {
    std::int16_t major = 0;
    std::int16_t minor = 0;
    systemVersionMajor(&major, &minor, nullptr);
    isMountainLionOrEarlier_ = major <= 10 && minor <= 8;
  }
  return *isMountainLionOrEarlier_;
}

bool SystemVersion::isYosemiteOrLater() {
  if (!isYosemiteOrLater_) isYosemiteOrLater_ = isAtLeastTen(10);
  return *isYosemiteOrLater_;
}

bool SystemVersion::isElCapitanOrLater() {
  if (!isElCapitanOrLater_) isElCapitanOrLater_ = isAtLeastTen(11);
  return *isElCapitanOrLater_;
}

bool SystemVersion::isAtLeastTen(std::int16_t minor) const {
  std::int16_t major = 0;
  std::int16_t presentMinor = 0;
  systemVersionMajor(&major, &presentMinor, nullptr);
  return major >= 10 && presentMinor >= minor;
}

}  // namespace qb
