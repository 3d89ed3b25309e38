#include "Quillbox/providers/ProviderCatalogue.h"

#include "Quillbox/providers/ActiveApplicationsProvider.h"
#include "Quillbox/providers/ClipboardHistoryProvider.h"
#include "Quillbox/providers/DropboxContentsProvider.h"
#include "Quillbox/providers/RecentApplicationsProvider.h"

namespace qb {

std::vector<std::shared_ptr<TabRowProviderInformation>> tabRowProviderCatalogue() {
  return {ActiveApplicationsProvider::information(), RecentApplicationsProvider::information(),
          DropboxContentsProvider::information(), FolderContentsProvider::information(),
          ClipboardHistoryProvider::information()};
}

}  // namespace qb
