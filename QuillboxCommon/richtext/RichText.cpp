#include "QuillboxCommon/richtext/RichText.h"

#include <cstdint>
#include <vector>

#include "QuillboxCommon/richtext/RTFReader.h"
#include "QuillboxCommon/richtext/RTFWriter.h"

namespace qb {

namespace {

constexpr std::string_view beginningOfRTF = "{\\rtf";
constexpr std::string_view beginningOfRTFD = "rtfd";
constexpr std::string_view nameOfText = "TXT.rtf";
constexpr std::uint32_t formOfHeader = 3;
constexpr std::uint32_t mostFiles = 1000;

void appendNumber(std::string& bytes, std::uint32_t number) {
  for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
}

/// Takes apart what lies one after the other. Once something is missing all further is empty or 0.
class Parts {
 public:
  explicit Parts(std::string_view bytes) : rest_(bytes) {}

  std::string_view bytes(std::size_t length) {
    if (length > rest_.size()) {
      areWhole_ = false;
      rest_ = {};
      return {};
    }
    const std::string_view part = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return part;
  }
  std::uint32_t number() {
    std::uint32_t value = 0;
    unsigned shift = 0;
    for (const char byte : bytes(4)) {
      value |= static_cast<std::uint32_t>(static_cast<unsigned char>(byte)) << shift;
      shift += 8;
    }
    return value;
  }
  bool areWhole() const { return areWhole_; }

 private:
  std::string_view rest_;
  bool areWhole_ = true;
};

/// The text file of a container in the form that is written here; empty for any other.
std::string_view textFileIn(std::string_view rtfd) {
  Parts parts(rtfd);
  parts.bytes(beginningOfRTFD.size());
  if (parts.number() != 0 || parts.number() != formOfHeader) return {};
  const std::uint32_t count = parts.number();
  if (count > mostFiles) return {};
  std::vector<std::string_view> names;
  for (std::uint32_t at = 0; at < count; ++at) names.push_back(parts.bytes(parts.number()));
  std::vector<std::uint32_t> sizes;
  for (std::uint32_t at = 0; at < count; ++at) sizes.push_back(parts.number());
  for (std::uint32_t at = 0; at < count; ++at) {
    const std::string_view contents = parts.bytes(sizes[at]);
    if (names[at] == nameOfText && parts.areWhole()) return contents;
  }
  return {};
}

}  // namespace

std::optional<AttributedString> attributedStringWithRTF(std::string_view rtf) {
  if (!rtf.starts_with(beginningOfRTF)) return std::nullopt;
  return RTFReader(rtf).read();
}

std::string rtfFromAttributedString(const AttributedString& text) {
  return RTFWriter().write(text);
}

std::optional<AttributedString> attributedStringWithRTFD(std::string_view rtfd) {
  if (!rtfd.starts_with(beginningOfRTFD)) return attributedStringWithRTF(rtfd);
  if (auto text = attributedStringWithRTF(textFileIn(rtfd))) return text;
  const std::size_t begin = rtfd.find(beginningOfRTF);
  if (begin == std::string_view::npos) return std::nullopt;
  return attributedStringWithRTF(rtfd.substr(begin));
}

std::string rtfdFromAttributedString(const AttributedString& text) {
  const std::string rtf = rtfFromAttributedString(text);
  std::string rtfd(beginningOfRTFD);
  for (const std::uint32_t number : {0U, formOfHeader, 1U}) appendNumber(rtfd, number);
  appendNumber(rtfd, static_cast<std::uint32_t>(nameOfText.size()));
  rtfd += nameOfText;
  appendNumber(rtfd, static_cast<std::uint32_t>(rtf.size()));
  return rtfd + rtf;
}

}  // namespace qb
