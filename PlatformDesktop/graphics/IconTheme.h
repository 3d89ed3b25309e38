#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace qb {

/// The user's icon theme: where the file of a named icon lies. Any thread; looks at the disk.
class IconTheme {
 public:
  /// `bases` are the folders that hold themes, the first first; `pixmaps` those with icons outside
  /// any theme. Icons that a theme and the themes it builds on lack are sought in "hicolor".
  IconTheme(std::string name, std::vector<std::string> bases, std::vector<std::string> pixmaps);
  /// As the desktop's settings name it.
  static std::shared_ptr<IconTheme> ofUser();

  /// The file for `pixels` in each direction: one made for that size where there is one, otherwise
  /// scalable, otherwise the nearest, larger rather than smaller. Empty when there is none.
  std::string fileOfIcon(const std::string& icon, int pixels) const;

 private:
  struct Folder {
    std::string path;
    int size = 0, minimum = 0, maximum = 0;
    bool scalable = false;
  };
  struct Theme {
    std::vector<std::string> roots, parents;
    std::vector<Folder> folders;
  };

  const Theme& theme(const std::string& name) const;
  std::vector<std::string> chain() const;
  std::string fileInTheme(const Theme& theme, const std::string& icon, int pixels) const;

  std::string name_;
  std::vector<std::string> bases_, pixmaps_;
  mutable std::mutex mutex_;
  mutable std::map<std::string, Theme> themes_;
};

}  // namespace qb
