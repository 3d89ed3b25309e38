// The tip that points at the gear of a row.

#include "Quillbox/rows/ConfigureTip.h"

#include "Platform/UserDefaults.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "QuillboxCommon/views/Button.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class ConfigureTipTest : public TabRowFixture {
 protected:
  void SetUp() override { makeOpenRow(2); }
  ProviderSelector& selector() { return row->providerSelector(); }
  ConfigureTip* tip() { return selector().configureTip(); }
  void changeProvider(const std::string& className) {
    const auto other = TestProvider::configurable(2);
    other->classTitle = className;
    row->setProvider(other);
  }
  bool isAcknowledged(const std::string& className) {
    return !platform.userDefaults()
                .objectForKey("Configure Tip Acknowledged for: " + className)
                .isNone();
  }
};

TEST_F(ConfigureTipTest, ComesHalfASecondAfterAChangeOfProvider) {
  changeProvider("SomeProvider");
  platform.runFor(0.499);
  EXPECT_EQ(tip(), nullptr);
  platform.runFor(0.002);
  ASSERT_NE(tip(), nullptr);
  EXPECT_EQ(tip()->view()->superview(), row.get());
}

TEST_F(ConfigureTipTest, StandsLeftOfTheSelectorWithItsText) {
  platform.graphics().setImageSize("RightArrow", {12, 10});
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  ASSERT_NE(tip(), nullptr);
  // The selector is 114 points wide, in the middle of 600.
  EXPECT_EQ(selector().frame(), Rect::make(243, 2, 114, 20));
  EXPECT_EQ(tip()->view()->frame(), Rect::make(243 - 4 - 280, 2, 280, 20));
  EXPECT_FALSE(tip()->view()->renderBackground());
  EXPECT_FALSE(tip()->view()->renderBorder());
  EXPECT_EQ(tip()->label().text(), "Click this gear for Extra Options");
  EXPECT_EQ(tip()->label().frame(), Rect::make(0, -1, 266, 20));
  EXPECT_TRUE(tip()->label().isShadowed());
  EXPECT_FALSE(tip()->label().renderBackground());
  ASSERT_EQ(tip()->view()->subviews().size(), 3U);
  const auto& arrow = static_cast<ImageView&>(*tip()->view()->subviews()[1]);
  EXPECT_EQ(simulatedImageName(arrow.image()), "RightArrow");
  EXPECT_EQ(arrow.frame(), Rect::make(268, 5, 12, 10));
  EXPECT_EQ(simulatedImageName(tip()->closeButton().image()), "DeleteElementButton");
  EXPECT_EQ(tip()->closeButton().frame(), Rect::make(0, 1, 20, 20));
}

TEST_F(ConfigureTipTest, FollowsTheSelector) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  row->setFrame(Rect::make(0, 0, 700, 90), {60, 60}, false);
  EXPECT_EQ(tip()->view()->frame().x(), 293 - 284);
}

TEST_F(ConfigureTipTest, CanBeClickedWhereItSticksOutOfANarrowRow) {
  row->setFrame(Rect::make(300, 0, 200, 80), {50, 50}, false);
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  ASSERT_EQ(tip()->view()->frame(), Rect::make(43 - 284, 2, 280, 20));
  // The close button is 20 points square, at 0, 1 of the tip.
  EXPECT_EQ(row->hitTest({300 - 241 + 10, 13}), &tip()->closeButton());
  EXPECT_EQ(row->hitTest({300 - 242, 13}), nullptr);
  EXPECT_EQ(row->hitTest({300 - 241 + 10, 24}), nullptr);
  tip()->closeButton().performClick();
  platform.runFor(0.51);
  EXPECT_EQ(row->hitTest({300 - 241 + 10, 13}), nullptr);
}

TEST_F(ConfigureTipTest, LightsTheSelectorWhileItShows) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  EXPECT_TRUE(selector().isHilited());
  tip()->closeButton().performClick();
  EXPECT_TRUE(selector().isHilited());
  platform.runFor(0.51);
  EXPECT_FALSE(selector().isHilited());
}

TEST_F(ConfigureTipTest, ItsButtonClosesItForGood) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  tip()->closeButton().performClick();
  EXPECT_TRUE(isAcknowledged("SomeProvider"));
  platform.runFor(0.24);
  ASSERT_NE(tip(), nullptr);
  EXPECT_LT(tip()->view()->alphaValue(), 1);
  platform.runFor(0.3);
  EXPECT_EQ(tip(), nullptr);
  changeProvider("SomeProvider");
  platform.runFor(2);
  EXPECT_EQ(tip(), nullptr);
}

TEST_F(ConfigureTipTest, EachKindOfProviderHasItsOwn) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  tip()->closeButton().performClick();
  platform.runFor(1);
  changeProvider("OtherProvider");
  platform.runFor(0.6);
  EXPECT_NE(tip(), nullptr);
}

TEST_F(ConfigureTipTest, ComesBackAtTheNextChangeWhenItOnlyTimedOut) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  platform.runFor(19.8);
  EXPECT_EQ(tip()->view()->alphaValue(), 1);
  platform.runFor(0.75);
  EXPECT_EQ(tip(), nullptr);
  EXPECT_FALSE(isAcknowledged("SomeProvider"));
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  EXPECT_NE(tip(), nullptr);
}

TEST_F(ConfigureTipTest, TheGearClosesItForGoodToo) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  selector().configureButton().performClick();
  platform.runFor(0.6);
  EXPECT_EQ(tip(), nullptr);
  EXPECT_TRUE(isAcknowledged("SomeProvider"));
}

TEST_F(ConfigureTipTest, AnotherProviderRemovesItAtOnce) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  const auto view = tip()->view();
  changeProvider("OtherProvider");
  EXPECT_EQ(tip(), nullptr);
  EXPECT_EQ(view->superview(), nullptr);
}

TEST_F(ConfigureTipTest, AFadingTipDoesNotTakeTheNextOneAlong) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  selector().removeConfigureTipWithAnimation(true);
  platform.runFor(0.1);
  selector().removeConfigureTipWithAnimation(false);
  selector().displayConfigureTip();
  platform.runFor(1);
  EXPECT_NE(tip(), nullptr);
}

TEST_F(ConfigureTipTest, AProviderThatCannotBeConfiguredHasNone) {
  row->setProvider(TestProvider::withItems(2));
  platform.runFor(2);
  EXPECT_EQ(tip(), nullptr);
}

TEST_F(ConfigureTipTest, OneThatShowsIsNotShownAgain) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  const auto view = tip()->view();
  selector().displayConfigureTip();
  EXPECT_EQ(tip()->view(), view);
}

TEST_F(ConfigureTipTest, GoesWithItsRow) {
  changeProvider("SomeProvider");
  platform.runFor(0.6);
  const std::weak_ptr<View> view = tip()->view();
  row.reset();
  EXPECT_TRUE(view.expired());
  platform.runFor(30);
}

}  // namespace
}  // namespace qb::test
