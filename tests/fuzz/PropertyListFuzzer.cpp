// Feeds arbitrary bytes to the property-list readers. Nothing may crash, hang or take memory
// without bounds, and what has been read has to survive being written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "PlatformDesktop/files/PropertyListReader.h"
#include "PlatformDesktop/files/PropertyListWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto value = qb::readPropertyList({reinterpret_cast<const char*>(data), size});
  if (!value) return 0;
  // The first writing may lose what the XML form cannot hold. From then on nothing changes; texts
  // are compared, because a number that is none does not equal itself.
  const auto once = qb::readPropertyList(qb::xmlPropertyList(*value));
  if (!once) std::abort();
  const std::string text = qb::xmlPropertyList(*once);
  const auto twice = qb::readPropertyList(text);
  if (!twice || qb::xmlPropertyList(*twice) != text) std::abort();
  return 0;
}
