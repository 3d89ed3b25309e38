#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Quillbox/providers/TabRowProvider.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

/// One entry of the Recent Applications row.
struct RecentApplication {
  std::string name;
  std::string bundlePath;
};

/// The applications that were started last, running or not, the latest first. Those that the user
/// has exempted are left out. A file manager that was seen running in this session and has ended
/// comes first, as if it were always at hand. Main thread.
class RecentApplicationsProvider : public TabRowProvider {
 public:
  static std::shared_ptr<TabRowProviderInformation> information();
  static std::shared_ptr<RecentApplicationsProvider> create();

  void prepareForDeallocation() override;
  std::string name() const override { return "Recent Applications"; }
  std::string className() const override { return "RecentApplicationsProvider"; }
  /// Entries whose bundle has gone count, although they get no item.
  std::int64_t numberOfItems() override;
  bool haveItemsChanged() override { return true; }
  void createItemsWithSize(Size size) override;
  void restoreState(const PropertyList& state) override;
  PropertyList state() const override;
  MenuItems menuItemsForItemConfigure(Item& item, MenuItems& existingItems) override;
  MenuItems menuItemsForConfigure() override;

  /// Takes the list as it is now.
  void updateRecentApplications();
  /// Leaves the application at that path out from now on.
  void excludeItem(const std::string& path);
  void resetExemptionList();

  const std::vector<RecentApplication>& recentApplications() const { return recentApplications_; }
  /// Bundle identifiers, and paths of bundles that have none.
  const std::vector<std::string>& exemptApplications() const { return exemptApplications_; }

 private:
  RecentApplicationsProvider();
  void observeList();
  /// Remembers the file manager's place when it runs.
  bool isFinderRunning();
  bool isExempt(const std::string& identifier, const std::string& path) const;
  void exemptionsHaveChanged();

  std::vector<RecentApplication> recentApplications_;
  std::vector<std::string> exemptApplications_;
  /// Empty until the file manager has been seen running.
  std::string finderBundlePath_;
  Subscription observer_;
};

}  // namespace qb
