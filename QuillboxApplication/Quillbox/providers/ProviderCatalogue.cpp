#include "Quillbox/providers/ProviderCatalogue.h"

#include "Quillbox/providers/ActiveApplicationsProvider.h"

namespace qb {

std::vector<std::shared_ptr<TabRowProviderInformation>> tabRowProviderCatalogue() {
  return {ActiveApplicationsProvider::information()};
}

}  // namespace qb
