#include "PlatformDesktop/session/InputPermission.h"

#include <gmock/gmock.h>

#include <map>

#include "Assistance.h"
#include "EventWait.h"
#include "Platform/Accessibility.h"
#include "PrivateBus.h"

namespace qb::test {
namespace {

class DefaultsInMemory : public UserDefaults {
 public:
  PropertyList objectForKey(const std::string& key) const override {
    const auto found = values_.find(key);
    return found == values_.end() ? PropertyList() : found->second;
  }
  void setObject(const PropertyList& value, const std::string& key) override {
    values_[key] = value;
  }

 private:
  std::map<std::string, PropertyList> values_;
};

TEST(InputPermissionTest, IsGrantedUntilTheUserSaysOtherwise) {
  SessionBus bus{QString()};
  const AccessibilitySwitch desktopSwitch(bus);
  DefaultsInMemory defaults;
  const InputPermission permission(defaults, desktopSwitch);
  EXPECT_TRUE(permission.isGranted());
  defaults.setObject(true, kInputAccessFollowsDesktopKey);
  EXPECT_TRUE(permission.isGranted()) << "a desktop without the switch has not turned it off";
  defaults.setObject(true, kInputAccessIsDeniedKey);
  EXPECT_FALSE(permission.isGranted());
  defaults.setObject(false, kInputAccessIsDeniedKey);
  EXPECT_TRUE(permission.isGranted());
}

TEST(InputPermissionTest, TheDesktopsSwitchDecidesOnlyWhereItIsHeeded) {
  const PrivateBus sessionBus;
  Assistance assistance(sessionBus.address(), false);
  SessionBus bus(sessionBus.address());
  const AccessibilitySwitch desktopSwitch(bus);
  DefaultsInMemory defaults;
  const InputPermission permission(defaults, desktopSwitch);
  ASSERT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  const struct {
    bool denied, heeded, off, expected;
  } cases[] = {
      {false, false, true, true}, {false, true, true, false}, {true, true, true, false},
      {false, true, false, true}, {true, true, false, false}, {true, false, false, false},
      {false, true, true, false},
  };
  for (const auto& each : cases) {
    defaults.setObject(each.denied, kInputAccessIsDeniedKey);
    defaults.setObject(each.heeded, kInputAccessFollowsDesktopKey);
    assistance.enable(!each.off);
    ASSERT_TRUE(waitFor([&] { return desktopSwitch.isOff() == each.off; }));
    EXPECT_EQ(permission.isGranted(), each.expected) << each.denied << each.heeded << each.off;
  }
}

}  // namespace
}  // namespace qb::test
