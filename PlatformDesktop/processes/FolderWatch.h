#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qb {

/// Tells when files in some folders are written, moved or deleted. The folders may come later and
/// go: until one is there, its nearest ancestor is watched. Main thread.
class FolderWatch : public QObject {
 public:
  struct Folder {
    /// Absolute.
    std::string path;
    /// All folders below it count too.
    bool isDeep;
  };

  /// `isOfInterest` gets the names of files; `changed` is called after each change of one, also
  /// several times for one change.
  FolderWatch(std::vector<Folder> folders, std::function<bool(std::string_view)> isOfInterest,
              std::function<void()> changed);
  ~FolderWatch() override;

 private:
  bool watchAll();
  void watch(const Folder& folder);
  bool watchNearest(const std::string& folder);
  bool add(const std::string& folder);
  void read();

  std::vector<Folder> folders_;
  std::function<bool(std::string_view)> isOfInterest_;
  std::function<void()> changed_;
  int descriptor_;
  std::unique_ptr<QSocketNotifier> notifier_;
  /// By the kernel's numbers. `wanted_` is where the next ones are gathered.
  std::set<int> watches_, wanted_;
};

}  // namespace qb
