#pragma once

#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/Item/ItemInformation.h"

namespace qb {

/// A server on the network, by the file that leads to it. Main thread.
class ServerItem : public FileSystemItem {
 public:
  static std::shared_ptr<ServerItem> create(const Rect& frame, const std::string& name,
                                            const std::string& path);
  static std::shared_ptr<ServerItem> create(const Rect& frame, const PropertyList& savedState);

  static ItemInformation information();

  std::int32_t type() const override { return ItemTypeServer; }

 protected:
  ServerItem(const Rect& frame, const std::string& name, const std::string& path)
      : FileSystemItem(frame, name, path) {}
  ServerItem(const Rect& frame, const PropertyList& savedState)
      : FileSystemItem(frame, savedState) {}
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;
};

}  // namespace qb
