#include "Quillbox/Item/ServerItem.h"

namespace qb {

std::shared_ptr<ServerItem> ServerItem::create(const Rect& frame, const std::string& name,
                                               const std::string& path) {
  std::shared_ptr<ServerItem> item(new ServerItem(frame, name, path));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<ServerItem> ServerItem::create(const Rect& frame, const PropertyList& savedState) {
  std::shared_ptr<ServerItem> item(new ServerItem(frame, savedState));
  item->beginShowingIcon();
  return item;
}

ItemInformation ServerItem::information() {
  return {"Server", "ServerItem", [](const Rect& frame, const PropertyList& savedState) {
            return create(frame, savedState);
          }};
}

std::shared_ptr<Item> ServerItem::createFromState(const Rect& frame,
                                                  const PropertyList& savedState) const {
  return create(frame, savedState);
}

}  // namespace qb
