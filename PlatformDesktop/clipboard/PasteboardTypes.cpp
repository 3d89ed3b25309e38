#include "PlatformDesktop/clipboard/PasteboardTypes.h"

namespace qb {

namespace {

struct Name {
  std::string_view type;
  std::string_view target;
};

/// By type, the best name first. Of a name that occurs twice, the first is its type.
constexpr Name names[] = {
    {"public.utf8-plain-text", "UTF8_STRING"},
    {"public.utf8-plain-text", "text/plain;charset=utf-8"},
    {"public.utf8-plain-text", "text/plain;charset=UTF-8"},
    {"public.utf8-plain-text", "text/plain"},
    {"public.utf8-plain-text", latinTextTarget},
    {"public.utf16-external-plain-text", "text/plain;charset=utf-16"},
    {"com.apple.traditional-mac-plain-text", "text/plain;charset=macintosh"},
    {"public.rtf", "text/rtf"},
    {"public.rtf", "application/rtf"},
    {"public.rtf", "text/richtext"},
    {"public.tiff", "image/tiff"},
    {"public.png", "image/png"},
    {"public.jpeg", "image/jpeg"},
    {"public.jpg", "image/jpeg"},
};

}  // namespace

std::vector<std::string> targetsOfType(std::string_view type) {
  std::vector<std::string> targets;
  for (const Name& name : names) {
    if (name.type == type) targets.emplace_back(name.target);
  }
  if (targets.empty()) targets.emplace_back(type);
  return targets;
}

std::string typeOfTarget(std::string_view target) {
  for (const Name& name : names) {
    if (name.target == target) return std::string(name.type);
  }
  return std::string(target);
}

}  // namespace qb
