#pragma once

#include <cstdint>
#include <memory>

#include "QuillboxCommon/views/Event.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

class TabRow;
class TabRowProviderInformation;

/// The tag of an entry that gives a row another provider.
inline constexpr std::int64_t MenuItemTagProvider = 92738;

/// The menus of a row as a whole: what it is to show, and how its provider is configured. Each
/// opens and returns when it has closed. Main thread.
class ProviderMenus {
 public:
  /// The row owns it.
  explicit ProviderMenus(TabRow& row) : row_(row) {}

  /// Every kind of provider on offer, what the present one adds, and what the panel adds.
  void popUpProviderSelectorMenuWithEvent(const Event& event);
  /// Below the selector.
  void popUpProviderConfigureMenu();
  /// `location` is in window coordinates.
  void popUpProviderConfigureMenuAtLocation(Point location);
  std::shared_ptr<Menu> createProviderConfigureMenu();
  /// The user has chosen an entry whose represented object is a
  /// `std::shared_ptr<TabRowProviderInformation>`. The present provider may object.
  void providerSelected(const MenuItem& sender);

 private:
  TabRow& row_;
};

}  // namespace qb
