// Feeds arbitrary bytes to the reader of rich text. Nothing may crash, hang or take memory without
// bounds; what has been read is text, and does not change when it is written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "QuillboxCommon/Utf8.h"
#include "QuillboxCommon/richtext/RichText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto text = qb::attributedStringWithRTFD({reinterpret_cast<const char*>(data), size});
  if (!text) return 0;
  for (const auto& run : text->runs()) {
    if (run.text.empty() || !qb::isUtf8(run.text)) std::abort();
  }
  // The first writing makes all ends of lines the same.
  const auto once = qb::attributedStringWithRTFD(qb::rtfdFromAttributedString(*text));
  if (!once) std::abort();
  const auto twice = qb::attributedStringWithRTFD(qb::rtfdFromAttributedString(*once));
  if (!twice || *twice != *once) std::abort();
  return 0;
}
