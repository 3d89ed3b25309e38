#include "PlatformDesktop/graphics/IconTheme.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "PlatformDesktop/processes/DesktopEntry.h"
#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr std::array extensions = {".png", ".svg", ".xpm"};

bool exists(const std::string& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

int numberOf(const KeyFileGroup& group, std::string_view key, int otherwise) {
  const std::string text(keyFileValue(group, key));
  return text.empty() ? otherwise : std::atoi(text.c_str());
}

std::string iconFile(const std::string& folder, const std::string& icon) {
  for (const char* extension : extensions) {
    std::string path = folder + '/' + icon + extension;
    if (exists(path)) return path;
  }
  return {};
}

/// What the usual desktops call the user's theme, in their files.
std::string themeNameOfUser() {
  struct Place {
    const char* file;
    const char* group;
    const char* key;
  };
  constexpr std::array places = {Place{"/gtk-4.0/settings.ini", "Settings", "gtk-icon-theme-name"},
                                 Place{"/gtk-3.0/settings.ini", "Settings", "gtk-icon-theme-name"},
                                 Place{"/kdeglobals", "Icons", "Theme"}};
  for (const std::string& folder : DesktopFolders::configuration()) {
    for (const Place& place : places) {
      const auto group = keyFileGroup(contentsOfFile(folder + place.file), place.group);
      const std::string_view name = keyFileValue(group, place.key);
      if (!name.empty()) return std::string(name);
    }
  }
  return "Adwaita";
}

}  // namespace

IconTheme::IconTheme(std::string name, std::vector<std::string> bases,
                     std::vector<std::string> pixmaps)
    : name_(std::move(name)), bases_(std::move(bases)), pixmaps_(std::move(pixmaps)) {}

std::shared_ptr<IconTheme> IconTheme::ofUser() {
  std::vector<std::string> bases = {DesktopFolders::home() + "/.icons"};
  std::vector<std::string> pixmaps;
  for (const std::string& folder : DesktopFolders::data()) {
    bases.push_back(folder + "/icons");
    pixmaps.push_back(folder + "/pixmaps");
  }
  pixmaps.insert(pixmaps.end(), bases.begin(), bases.end());
  return std::make_shared<IconTheme>(themeNameOfUser(), std::move(bases), std::move(pixmaps));
}

const IconTheme::Theme& IconTheme::theme(const std::string& name) const {
  const auto [known, isNew] = themes_.try_emplace(name);
  Theme& theme = known->second;
  if (!isNew) return theme;
  std::string description;
  for (const std::string& base : bases_) {
    const std::string root = base + '/' + name;
    std::error_code error;
    if (!fs::is_directory(root, error)) continue;
    theme.roots.push_back(root);
    if (description.empty()) description = contentsOfFile(root + "/index.theme");
  }
  const KeyFileGroup head = keyFileGroup(description, "Icon Theme");
  theme.parents = splitList(keyFileValue(head, "Inherits"), ',');
  for (const std::string& path : splitList(keyFileValue(head, "Directories"), ',')) {
    const KeyFileGroup group = keyFileGroup(description, path);
    // Of pictures for doubled pixels the plain ones of twice the size do as well.
    if (numberOf(group, "Scale", 1) != 1) continue;
    Folder folder;
    folder.path = path;
    folder.size = numberOf(group, "Size", 0);
    const std::string_view type = keyFileValue(group, "Type");
    folder.scalable = type == "Scalable";
    const int threshold = type == "Fixed" || folder.scalable ? 0 : numberOf(group, "Threshold", 2);
    folder.minimum = numberOf(group, "MinSize", folder.size) - threshold;
    folder.maximum = numberOf(group, "MaxSize", folder.size) + threshold;
    theme.folders.push_back(std::move(folder));
  }
  return theme;
}

std::vector<std::string> IconTheme::chain() const {
  std::vector<std::string> names = {name_};
  for (std::size_t i = 0; i < names.size(); ++i) {
    for (const std::string& parent : theme(names[i]).parents) {
      if (std::find(names.begin(), names.end(), parent) == names.end()) names.push_back(parent);
    }
  }
  std::erase(names, "hicolor");
  names.emplace_back("hicolor");
  return names;
}

std::string IconTheme::fileInTheme(const Theme& theme, const std::string& icon, int pixels) const {
  std::vector<const Folder*> order;
  for (const Folder& folder : theme.folders) order.push_back(&folder);
  const auto rank = [pixels](const Folder* folder) {
    const bool fits = pixels >= folder->minimum && pixels <= folder->maximum;
    const bool larger = folder->size >= pixels;
    const int distance = std::abs(folder->size - pixels);
    // Scaling down does less harm than scaling up.
    return std::tuple(!fits, !folder->scalable && !fits, !larger, distance);
  };
  std::stable_sort(order.begin(), order.end(),
                   [&rank](const Folder* a, const Folder* b) { return rank(a) < rank(b); });
  for (const Folder* folder : order) {
    for (const std::string& root : theme.roots) {
      if (std::string file = iconFile(root + '/' + folder->path, icon); !file.empty()) return file;
    }
  }
  return {};
}

std::string IconTheme::fileOfIcon(const std::string& icon, int pixels) const {
  if (icon.empty()) return {};
  if (icon.front() == '/') return exists(icon) ? icon : "";
  const std::lock_guard lock(mutex_);
  // Some name a file, ending and all.
  std::string name = icon;
  for (const char* extension : extensions) {
    if (name.ends_with(extension)) name.erase(name.rfind(extension));
  }
  for (const std::string& each : chain()) {
    if (std::string file = fileInTheme(theme(each), name, pixels); !file.empty()) return file;
  }
  for (const std::string& folder : pixmaps_) {
    if (std::string file = iconFile(folder, name); !file.empty()) return file;
  }
  return {};
}

}  // namespace qb
