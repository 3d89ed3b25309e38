#include "PlatformDesktop/files/FileUrl.h"

namespace qb {

namespace {

bool isUnreserved(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~';
}

}  // namespace

std::string percentEncoded(std::string_view text, std::string_view kept) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    if (isUnreserved(c) || kept.find(c) != std::string_view::npos) {
      result += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      result += {'%', digits[byte >> 4U], digits[byte & 0x0FU]};
    }
  }
  return result;
}

std::string fileUrl(const std::string& path) { return "file://" + percentEncoded(path, "/"); }

}  // namespace qb
