#include "PlatformDesktop/session/AccessibilitySwitch.h"

#include <gmock/gmock.h>

#include "Assistance.h"
#include "EventWait.h"
#include "PrivateBus.h"

namespace qb::test {
namespace {

TEST(AccessibilitySwitchTest, IsNotOffWithoutABus) {
  SessionBus bus{QString()};
  EXPECT_FALSE(AccessibilitySwitch(bus).isOff());
}

TEST(AccessibilitySwitchTest, IsFollowedWhereverItIsTurned) {
  const PrivateBus sessionBus;
  Assistance assistance(sessionBus.address(), false);
  SessionBus bus(sessionBus.address());
  AccessibilitySwitch desktopSwitch(bus);
  int changes = 0;
  desktopSwitch.setObserver([&] { ++changes; });
  EXPECT_FALSE(desktopSwitch.isOff()) << "before it is known";
  EXPECT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  assistance.enable(true);
  EXPECT_TRUE(waitFor([&] { return !desktopSwitch.isOff(); }));
  assistance.enable(false);
  EXPECT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  EXPECT_EQ(changes, 3);
}

TEST(AccessibilitySwitchTest, TheSameAgainIsNoChange) {
  const PrivateBus sessionBus;
  Assistance assistance(sessionBus.address(), true);
  SessionBus bus(sessionBus.address());
  AccessibilitySwitch desktopSwitch(bus);
  int changes = 0;
  desktopSwitch.setObserver([&] { ++changes; });
  ASSERT_TRUE(waitFor([&] { return assistance.questions() == 1; }));
  assistance.enable(true);
  ASSERT_TRUE(waitFor([&] { return assistance.questions() == 2; }));
  assistance.enable(false);
  ASSERT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  EXPECT_EQ(changes, 1);
}

TEST(AccessibilitySwitchTest, TechnologiesMayComeLaterAndGo) {
  const PrivateBus sessionBus;
  SessionBus bus(sessionBus.address());
  const AccessibilitySwitch desktopSwitch(bus);
  bool connected = false;
  bus.whenConnected([&](QDBusConnection&) { connected = true; });
  ASSERT_TRUE(waitFor([&] { return connected; }));
  {
    const Assistance assistance(sessionBus.address(), false);
    EXPECT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  }
  EXPECT_TRUE(waitFor([&] { return !desktopSwitch.isOff(); }));
}

}  // namespace
}  // namespace qb::test
