#pragma once

#include "Quillbox/Item/FolderItem.h"

namespace qb {

/// A mounted volume: a folder in all but its name and type. Main thread.
class VolumeItem : public FolderItem {
 public:
  /// Named after the folder on which it is mounted.
  static std::shared_ptr<VolumeItem> create(const Rect& frame, const std::string& path);
  static std::shared_ptr<VolumeItem> create(const Rect& frame, const std::string& name,
                                            const std::string& path);
  static std::shared_ptr<VolumeItem> create(const Rect& frame, const PropertyList& savedState);
  static ItemInformation information();

  std::int32_t type() const override { return ItemTypeVolume; }

 protected:
  using FolderItem::FolderItem;
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;
};

}  // namespace qb
