#include "PlatformDesktop/session/DesktopArchiver.h"

#include <string>

#include "PlatformDesktop/files/PropertyListReader.h"
#include "PlatformDesktop/files/PropertyListWriter.h"

namespace qb {

PropertyList::Data DesktopArchiver::archivedDataWithRootObject(const PropertyList& root) const {
  const std::string text = xmlPropertyList(root);
  return {text.begin(), text.end()};
}

std::optional<PropertyList> DesktopArchiver::unarchiveObjectWithData(
    const PropertyList::Data& data) const {
  return readPropertyList({reinterpret_cast<const char*>(data.data()), data.size()});
}

}  // namespace qb
