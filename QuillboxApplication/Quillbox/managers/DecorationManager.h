#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

class FileSystem;
class Graphics;
class Item;

/// The tint and the badge that the user has given to items, kept in a file of their own by the
/// items' decoration keys. It shows nothing by itself: whoever decorates an item has it drawn anew.
/// Main thread.
class DecorationManager {
 public:
  using Tints = std::vector<std::pair<std::string, Color>>;
  /// Stands for no badge and for no tint; also the name of the picture that offers it.
  static constexpr char noDecorationName[] = "BadgeZNone.png";

  /// Loads what is saved. Both must outlive it.
  DecorationManager(FileSystem& fileSystem, Graphics& graphics);

  /// The names of all tints with their colours, in the order in which they are offered.
  static const Tints& tints();
  /// The names of all badges, that for none among them, in the order of their bytes.
  std::vector<std::string> badgeNames() const;
  /// The picture of such a name; empty when there is none of that name.
  Image badgeImageNamed(const std::string& name) const;

  /// Sets and saves at once, whether that changes anything or not. An empty name, like that for
  /// none, takes the decoration off. Nothing happens for an item without a key.
  void setTintName(const std::string& name, const Item& forItem);
  void setBadgeName(const std::string& name, const Item& forItem);
  /// None for an item without a tint, and for a tint that is not known.
  std::optional<Color> tintColorForItem(const Item& item) const;
  /// Empty for an item without a badge, and for a badge that is not known.
  Image badgeImageForItem(const Item& item) const;

  /// Starts anew from the file; a missing one means no decorations.
  void loadDecorations();
  /// A failure goes unnoticed; the decorations then last as long as the program.
  void saveDecorations() const;

 private:
  void setName(const std::string& name, const Item& item, PropertyList& names);
  std::string path() const;

  FileSystem& fileSystem_;
  Graphics& graphics_;
  /// Names by decoration key.
  PropertyList tintNames_, badgeNames_;
};

}  // namespace qb
