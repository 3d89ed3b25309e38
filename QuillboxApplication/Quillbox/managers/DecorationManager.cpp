#include "Quillbox/managers/DecorationManager.h"

#include <algorithm>
#include <string_view>

#include "Platform/FileSystem.h"
#include "Platform/Graphics.h"
#include "Quillbox/Item/Item.h"

namespace qb {

namespace {

constexpr char kTintNamesKey[] = "TintNames";
constexpr char kBadgeNamesKey[] = "BadgeNames";
constexpr char badgePrefix[] = "Badge";
/// Part of the names in the file, whatever the pictures are made of.
constexpr std::string_view badgeExtension = ".png";
constexpr double tintAlpha = 0.33;

constexpr Color tint(double red, double green, double blue) {
  return Color::colorWithCalibratedRed(red, green, blue, tintAlpha);
}

void addEntries(PropertyList& names, const PropertyList& from) {
  for (const auto& [key, value] : from.dictionaryValue()) names.setObject(value, key);
}

}  // namespace

DecorationManager::DecorationManager(FileSystem& fileSystem, Graphics& graphics)
    : fileSystem_(fileSystem), graphics_(graphics) {
  loadDecorations();
}

const DecorationManager::Tints& DecorationManager::tints() {
  static const Tints tints = {{"Red", tint(1, 0.5, 0.5)},
                              {"Green", tint(0.5, 1, 0.5)},
                              {"Blue", tint(0.5, 0.5, 1)},
                              {"Yellow", tint(1, 1, 0.5)},
                              {"Black", tint(0.25, 0.25, 0.25)}};
  return tints;
}

std::vector<std::string> DecorationManager::badgeNames() const {
  std::vector<std::string> names = graphics_.imageNames(badgePrefix);
  for (std::string& name : names) name += badgeExtension;
  return names;
}

Image DecorationManager::badgeImageNamed(const std::string& name) const {
  const bool extended = name.ends_with(badgeExtension);
  return graphics_.imageNamed(extended ? name.substr(0, name.size() - badgeExtension.size())
                                       : name);
}

void DecorationManager::setTintName(const std::string& name, const Item& forItem) {
  setName(name, forItem, tintNames_);
}

void DecorationManager::setBadgeName(const std::string& name, const Item& forItem) {
  setName(name, forItem, badgeNames_);
}

void DecorationManager::setName(const std::string& name, const Item& item, PropertyList& names) {
  const std::string key = item.decorationKey();
  if (key.empty()) return;
  if (name.empty() || name == noDecorationName) {
    names.removeObjectForKey(key);
  } else {
    names.setObject(name, key);
  }
  saveDecorations();
}

std::optional<Color> DecorationManager::tintColorForItem(const Item& item) const {
  const std::string& name = tintNames_.objectForKey(item.decorationKey()).stringValue();
  const auto found = std::find_if(tints().begin(), tints().end(),
                                  [&name](const auto& known) { return known.first == name; });
  return found == tints().end() ? std::nullopt : std::optional(found->second);
}

Image DecorationManager::badgeImageForItem(const Item& item) const {
  const std::string& name = badgeNames_.objectForKey(item.decorationKey()).stringValue();
  return name.empty() ? Image() : badgeImageNamed(name);
}

void DecorationManager::loadDecorations() {
  tintNames_ = PropertyList::dictionary();
  badgeNames_ = PropertyList::dictionary();
  const auto saved = fileSystem_.dictionaryWithContentsOfFile(path());
  if (!saved) return;
  addEntries(tintNames_, saved->objectForKey(kTintNamesKey));
  addEntries(badgeNames_, saved->objectForKey(kBadgeNamesKey));
}

void DecorationManager::saveDecorations() const {
  fileSystem_.writeToFile(
      PropertyList::dictionary({{kTintNamesKey, tintNames_}, {kBadgeNamesKey, badgeNames_}}),
      path());
}

std::string DecorationManager::path() const {
  return fileSystem_.stringByExpandingTildeInPath(
      "~/Library/Preferences/com.vorlane.quillbox.decorations");
}

}  // namespace qb
