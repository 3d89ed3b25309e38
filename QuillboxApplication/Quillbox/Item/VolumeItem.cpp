#include "Quillbox/Item/VolumeItem.h"

#include "Quillbox/Item/FilePaths.h"

namespace qb {

std::shared_ptr<VolumeItem> VolumeItem::create(const Rect& frame, const std::string& path) {
  return create(frame, fileNameFromFullPath(path, false), path);
}

std::shared_ptr<VolumeItem> VolumeItem::create(const Rect& frame, const std::string& name,
                                               const std::string& path) {
  std::shared_ptr<VolumeItem> item(new VolumeItem(frame, name, path));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<VolumeItem> VolumeItem::create(const Rect& frame, const PropertyList& savedState) {
  std::shared_ptr<VolumeItem> item(new VolumeItem(frame, savedState));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<Item> VolumeItem::createFromState(const Rect& frame,
                                                  const PropertyList& savedState) const {
  return create(frame, savedState);
}

ItemInformation VolumeItem::information() {
  return {"Volume", "VolumeItem", [](const Rect& frame, const PropertyList& savedState) {
            return create(frame, savedState);
          }};
}

}  // namespace qb
