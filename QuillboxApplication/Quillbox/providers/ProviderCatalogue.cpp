#include "Quillbox/providers/ProviderCatalogue.h"

#include "Quillbox/providers/ActiveApplicationsProvider.h"
#include "Quillbox/providers/FolderContentsProvider.h"
#include "Quillbox/providers/RecentApplicationsProvider.h"

namespace qb {

std::vector<std::shared_ptr<TabRowProviderInformation>> tabRowProviderCatalogue() {
  return {ActiveApplicationsProvider::information(), RecentApplicationsProvider::information(),
          FolderContentsProvider::information()};
}

}  // namespace qb
