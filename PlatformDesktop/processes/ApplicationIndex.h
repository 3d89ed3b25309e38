#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "PlatformDesktop/processes/DesktopEntry.h"

namespace qb {

/// What a running program shows of itself, to find its desktop entry by.
struct ProgramTraits {
  std::string className, instanceName;
  /// Names of its program file, without folders: what runs and what was asked to run.
  std::vector<std::string> programNames;
};

/// The installed applications as they stood when it was made. Immutable; any thread.
class ApplicationIndex {
 public:
  /// Reads the folders "applications" of `dataFolders`, where earlier ones hide later ones, and
  /// the default applications of `configurationFolders`.
  static ApplicationIndex load(const std::vector<std::string>& dataFolders,
                               const std::vector<std::string>& configurationFolders,
                               std::string_view locale);

  const std::vector<DesktopEntry>& entries() const { return entries_; }
  /// Null when there is none of that path.
  const DesktopEntry* entryAtPath(const std::string& path) const;
  /// The entry that a program belongs to, or null: by the class that the entry claims, by its id,
  /// by the program that it runs, in this order.
  const DesktopEntry* match(const ProgramTraits& traits) const;
  /// The application of that identifier, or null: of several, one that menus show.
  const DesktopEntry* entryWithIdentifier(const std::string& identifier) const;
  /// The identifier that an application goes by: that of its role on the desktop, where it is the
  /// default application of one, otherwise the entry's id.
  const std::string& identifierOf(const DesktopEntry& entry) const;
  /// The same for a program without an entry: its name, unless it is known by another.
  static std::string identifierOfProgram(const std::string& name);

 private:
  void addFolder(const std::string& root, std::string_view locale);
  void buildTables();
  void assignRoles(const std::vector<std::string>& dataFolders,
                   const std::vector<std::string>& configurationFolders);

  std::vector<DesktopEntry> entries_;
  /// All by place in `entries_`; ids, classes and programs in lower case.
  std::unordered_map<std::string, std::size_t> byPath_, byId_, byClass_, byProgram_;
  std::map<std::string, std::string> roleOfId_;
};

}  // namespace qb
