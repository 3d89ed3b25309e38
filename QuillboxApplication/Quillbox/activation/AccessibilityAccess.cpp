#include "Quillbox/activation/AccessibilityAccess.h"

#include <string>

#include "Platform/Accessibility.h"
#include "Platform/Archiver.h"
#include "Platform/Pasteboards.h"

namespace qb {

bool AccessibilityAccess::hasAccessibilityAccess() {
  const bool access = platform_.accessibility().isProcessTrusted();
  if (lastAnswer_ != static_cast<std::int32_t>(access)) {
    lastAnswer_ = static_cast<std::int32_t>(access);
    publish(access);
  }
  return access;
}

void AccessibilityAccess::publish(bool access) const {
  const PropertyList information = PropertyList::dictionary(
      {{std::string(QuillboxInformationHasAccessibilityAccessKey), access}});
  const auto pasteboard =
      platform_.pasteboards().pasteboardWithName(std::string(quillboxInformationPasteboard));
  pasteboard->clearContents();
  pasteboard->setData(platform_.archiver().archivedDataWithRootObject(information),
                      std::string(QuillboxInformationType));
}

}  // namespace qb
