#include "PlatformDesktop/files/PropertyListReader.h"

namespace qb {

std::optional<PropertyList> readPropertyList(std::string_view bytes) {
  return bytes.starts_with("bplist") ? readBinaryPropertyList(bytes) : readXmlPropertyList(bytes);
}

}  // namespace qb
