#include "PlatformDesktop/processes/ApplicationIndex.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>

#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view extension = ".desktop";
constexpr int deepestFolder = 3;

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](unsigned char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  });
  return result;
}

/// What the default application of a type is known as.
struct DefaultRole {
  std::string_view mimeType, identifier;
};
constexpr std::array defaultRoles = {
    DefaultRole{"inode/directory", "com.apple.finder"},
    DefaultRole{"x-scheme-handler/mailto", "com.apple.mail"},
    DefaultRole{"text/calendar", "com.apple.iCal"},
    DefaultRole{"text/plain", "com.apple.TextEdit"},
    DefaultRole{"image/png", "com.apple.Preview"},
};

/// Applications known by one name whichever way they were installed.
struct KnownApplication {
  std::string_view id, identifier;
};
constexpr std::array knownApplications = {
    KnownApplication{"google-chrome", "com.google.Chrome"},
    KnownApplication{"chromium", "com.google.Chrome"},
    KnownApplication{"chromium-browser", "com.google.Chrome"},
    KnownApplication{"com.google.chrome", "com.google.Chrome"},
    KnownApplication{"org.chromium.chromium", "com.google.Chrome"},
    KnownApplication{"firefox", "org.mozilla.firefox"},
    KnownApplication{"firefox-esr", "org.mozilla.firefox"},
    KnownApplication{"org.mozilla.firefox", "org.mozilla.firefox"},
    KnownApplication{"gnome-control-center", "com.apple.systempreferences"},
    KnownApplication{"org.gnome.settings", "com.apple.systempreferences"},
    KnownApplication{"xfce-settings-manager", "com.apple.systempreferences"},
    KnownApplication{"systemsettings", "com.apple.systempreferences"},
    // Ours stand there too.
    KnownApplication{"quillbox-preferences", "com.apple.systempreferences"},
    KnownApplication{"dropbox", "com.getdropbox.dropbox"},
    KnownApplication{"com.dropbox.client", "com.getdropbox.dropbox"},
};

/// The files that name default applications, the user's first.
std::vector<std::string> defaultsFiles(const std::vector<std::string>& dataFolders,
                                       const std::vector<std::string>& configurationFolders) {
  std::vector<std::string> files;
  for (const std::string& folder : configurationFolders) files.push_back(folder + "/mimeapps.list");
  for (const std::string& folder : dataFolders) {
    files.push_back(folder + "/applications/mimeapps.list");
  }
  for (const std::string& folder : dataFolders) {
    files.push_back(folder + "/applications/defaults.list");
  }
  return files;
}

}  // namespace

ApplicationIndex ApplicationIndex::load(const std::vector<std::string>& dataFolders,
                                        const std::vector<std::string>& configurationFolders,
                                        std::string_view locale) {
  ApplicationIndex index;
  for (const std::string& folder : dataFolders) index.addFolder(folder + "/applications", locale);
  index.buildTables();
  index.assignRoles(dataFolders, configurationFolders);
  return index;
}

void ApplicationIndex::addFolder(const std::string& root, std::string_view locale) {
  std::set<std::string> known;
  for (const DesktopEntry& entry : entries_) known.insert(entry.id);
  std::vector<std::string> paths;
  std::error_code error;
  fs::recursive_directory_iterator walk(root, fs::directory_options::skip_permission_denied, error);
  for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error)) {
    if (walk.depth() >= deepestFolder) walk.disable_recursion_pending();
    const std::string path = walk->path().string();
    if (path.ends_with(extension)) paths.push_back(path);
  }
  // In an order that the file system does not decide.
  std::sort(paths.begin(), paths.end());
  for (const std::string& path : paths) {
    std::string id = path.substr(root.size() + 1, path.size() - root.size() - 1 - extension.size());
    std::replace(id.begin(), id.end(), '/', '-');
    if (!known.insert(id).second) continue;
    auto entry = DesktopEntry::parse(contentsOfFile(path), id, path, locale);
    if (entry) entries_.push_back(std::move(*entry));
  }
}

void ApplicationIndex::buildTables() {
  // Of two that could be meant, one that menus show goes first.
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].hidden) order.push_back(i);
  }
  std::stable_partition(order.begin(), order.end(),
                        [this](std::size_t i) { return !entries_[i].noDisplay; });
  for (const std::size_t i : order) {
    const DesktopEntry& entry = entries_[i];
    byPath_.emplace(entry.path, i);
    byId_.emplace(lowerCase(entry.id), i);
    if (!entry.startupWmClass.empty()) byClass_.emplace(lowerCase(entry.startupWmClass), i);
    // What runs in a terminal shows the terminal's window.
    if (const std::string program = entry.programName();
        !program.empty() && !entry.runsInTerminal) {
      byProgram_.emplace(lowerCase(program), i);
    }
  }
  // The last part of a reversed domain name is what windows often call themselves.
  for (const std::size_t i : order) {
    const std::string id = lowerCase(entries_[i].id);
    const std::size_t dot = id.rfind('.');
    if (dot != std::string::npos) byId_.emplace(id.substr(dot + 1), i);
  }
}

void ApplicationIndex::assignRoles(const std::vector<std::string>& dataFolders,
                                   const std::vector<std::string>& configurationFolders) {
  for (const KnownApplication& known : knownApplications) {
    const auto found = byId_.find(std::string(known.id));
    if (found != byId_.end() && lowerCase(entries_[found->second].id) == known.id) {
      roleOfId_.emplace(entries_[found->second].id, known.identifier);
    }
  }
  std::vector<KeyFileGroup> files;
  for (const std::string& file : defaultsFiles(dataFolders, configurationFolders)) {
    files.push_back(keyFileGroup(contentsOfFile(file), "Default Applications"));
  }
  // Where nobody chose, what an application says it can open decides, in the order of the cache.
  for (const std::string& folder : dataFolders) {
    files.push_back(
        keyFileGroup(contentsOfFile(folder + "/applications/mimeinfo.cache"), "MIME Cache"));
  }
  for (const DefaultRole& role : defaultRoles) {
    const auto firstInstalled = [this, &role](const KeyFileGroup& file) -> const DesktopEntry* {
      for (const std::string& name : splitList(keyFileValue(file, role.mimeType), ';')) {
        if (!name.ends_with(extension)) continue;
        const auto found = byId_.find(lowerCase(name.substr(0, name.size() - extension.size())));
        if (found != byId_.end()) return &entries_[found->second];
      }
      return nullptr;
    };
    for (const KeyFileGroup& file : files) {
      if (const DesktopEntry* const entry = firstInstalled(file)) {
        roleOfId_.emplace(entry->id, role.identifier);
        break;
      }
    }
  }
}

const DesktopEntry* ApplicationIndex::entryAtPath(const std::string& path) const {
  const auto found = byPath_.find(path);
  return found == byPath_.end() ? nullptr : &entries_[found->second];
}

const DesktopEntry* ApplicationIndex::match(const ProgramTraits& traits) const {
  const auto find = [this](const std::unordered_map<std::string, std::size_t>& table,
                           const std::string& key) -> const DesktopEntry* {
    const auto found = table.find(lowerCase(key));
    return key.empty() || found == table.end() ? nullptr : &entries_[found->second];
  };
  for (const auto* table : {&byClass_, &byId_}) {
    for (const std::string* key : {&traits.className, &traits.instanceName}) {
      if (const DesktopEntry* const entry = find(*table, *key)) return entry;
    }
  }
  for (const std::string& program : traits.programNames) {
    if (const DesktopEntry* const entry = find(byProgram_, program)) return entry;
  }
  return nullptr;
}

const DesktopEntry* ApplicationIndex::entryWithIdentifier(const std::string& identifier) const {
  const DesktopEntry* found = nullptr;
  for (const DesktopEntry& entry : entries_) {
    if (entry.hidden || identifierOf(entry) != identifier) continue;
    if (!entry.noDisplay) return &entry;
    if (found == nullptr) found = &entry;
  }
  return found;
}

std::string ApplicationIndex::identifierOfProgram(const std::string& name) {
  const auto known =
      std::find_if(knownApplications.begin(), knownApplications.end(),
                   [id = lowerCase(name)](const KnownApplication& each) { return each.id == id; });
  return known != knownApplications.end() ? std::string(known->identifier) : name;
}

const std::string& ApplicationIndex::identifierOf(const DesktopEntry& entry) const {
  const auto role = roleOfId_.find(entry.id);
  return role == roleOfId_.end() ? entry.id : role->second;
}

}  // namespace qb
