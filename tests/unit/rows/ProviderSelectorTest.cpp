#include "Quillbox/rows/ProviderSelector.h"

#include "Quillbox/activation/Settings.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

class ProviderSelectorTest : public HostViewFixture {
 protected:
  /// A panel of one row of test items that has a gear, above the one of applications.
  void makePanel() {
    providers.push_back(TestProvider::configurable(3));
    rows.push_back(host().createTabRowAtIndex(0, providers.back(), true));
    open(ActivationMethodCommandDoubleTap);
    platform.runFor(0.5);
  }
  /// The same with a row that has no provider yet.
  void makePanelWithNewRow() {
    open(ActivationMethodCommandDoubleTap);
    platform.runFor(0.5);
    rows.push_back(host().createTabRowAtIndex(0, nullptr, true));
  }
  ProviderSelector& selector() { return rows[0]->providerSelector(); }
  double hiliteAlpha() { return selector().hiliteView().alphaValue(); }
  /// The pointer moves onto the selector, or to where nothing is.
  void pointAtSelector() {
    platform.pointer().moveTo(onScreen(*rows[0], selector().frame().center()));
    platform.runFor(0.06);
  }
  void pointAway() {
    platform.pointer().moveTo(onScreen(*rows[0], {60, 100}));
    platform.runFor(0.06);
  }
};

TEST_F(ProviderSelectorTest, LaysOutItsPartsInItsBounds) {
  platform.graphics().setImageSize("DownArrow", {12, 8});
  platform.graphics().setImageSize("TabRowProviderConfigureButton", {13, 14});
  const auto provider = TestProvider::withItems(0);
  const auto selector = ProviderSelector::create(nullptr, Rect::make(10, 2, 200, 20), provider);
  EXPECT_EQ(selector->hiliteView().frame(), Rect::make(0, 0, 200, 20));
  EXPECT_EQ(selector->nameLabel().frame(), Rect::make(65, 0, 70, 18));
  EXPECT_EQ(selector->arrowView().frame(), Rect::make(179, 7, 12, 8));
  EXPECT_EQ(selector->configureButton().frame(), Rect::make(5, 3, 14, 15));
  EXPECT_EQ(selector->naturalWidth(), 70 + 44);
  selector->setFrame(Rect::make(0, 0, 100, 24));
  EXPECT_EQ(selector->hiliteView().frame(), Rect::make(0, 0, 100, 24));
  EXPECT_EQ(selector->nameLabel().frame(), Rect::make(15, 0, 70, 18));
  EXPECT_EQ(selector->arrowView().frame(), Rect::make(79, 7, 12, 8));
}

TEST_F(ProviderSelectorTest, StacksTheHiliteBelowTheName) {
  const auto selector =
      ProviderSelector::create(nullptr, Rect::make(0, 0, 200, 20), TestProvider::withItems(0));
  ASSERT_EQ(selector->subviews().size(), 4U);
  EXPECT_EQ(selector->subviews()[0].get(), &selector->hiliteView());
  EXPECT_EQ(selector->subviews()[1].get(), &selector->nameLabel());
  EXPECT_EQ(selector->subviews()[2].get(), &selector->arrowView());
  EXPECT_EQ(selector->subviews()[3].get(), &selector->configureButton());
}

TEST_F(ProviderSelectorTest, BeginsUnlitWithAProvider) {
  makePanel();
  EXPECT_FALSE(selector().isHilited());
  EXPECT_FALSE(selector().isThrobbing());
  EXPECT_EQ(hiliteAlpha(), 0);
  EXPECT_EQ(selector().arrowView().alphaValue(), 0);
  EXPECT_EQ(selector().configureButton().alphaValue(), 0);
  EXPECT_EQ(simulatedImageName(selector().arrowView().image()), "DownArrow");
  EXPECT_EQ(simulatedImageName(selector().configureButton().image()),
            "TabRowProviderConfigureButton");
}

TEST_F(ProviderSelectorTest, LightsUpUnderThePointer) {
  makePanel();
  pointAtSelector();
  EXPECT_TRUE(selector().isHilited());
  EXPECT_EQ(selector().hiliteView().backgroundColor(), settings().tabRowColor());
  platform.runFor(0.3);
  EXPECT_EQ(hiliteAlpha(), 0.5);
  EXPECT_EQ(selector().arrowView().alphaValue(), 1);
  EXPECT_EQ(selector().configureButton().alphaValue(), 1);
  EXPECT_FALSE(selector().configureButton().isHidden());
  pointAway();
  EXPECT_FALSE(selector().isHilited());
  platform.runFor(0.3);
  EXPECT_EQ(hiliteAlpha(), 0);
  EXPECT_EQ(selector().arrowView().alphaValue(), 0);
  EXPECT_EQ(selector().configureButton().alphaValue(), 0);
}

TEST_F(ProviderSelectorTest, LeavingTheRowPutsItOut) {
  makePanel();
  pointAtSelector();
  platform.pointer().moveTo({2, 2});
  platform.runFor(0.06);
  EXPECT_FALSE(selector().isHilited());
}

TEST_F(ProviderSelectorTest, AProviderThatCannotBeConfiguredShowsNoGear) {
  makePanel();
  rows[0]->setProvider(TestProvider::withItems(2));
  pointAtSelector();
  platform.runFor(1);
  EXPECT_TRUE(selector().isHilited());
  EXPECT_TRUE(selector().configureButton().isHidden());
  EXPECT_EQ(selector().configureTip(), nullptr);
}

TEST_F(ProviderSelectorTest, OpeningAndClosingPutItOut) {
  makePanel();
  pointAtSelector();
  platform.runFor(0.3);
  close();
  EXPECT_FALSE(selector().isHilited());
  EXPECT_TRUE(selector().arrowView().isHidden());
  EXPECT_TRUE(selector().hiliteView().isHidden());
  // It lights up again although the pointer has not left it meanwhile.
  open(ActivationMethodCorner);
  EXPECT_FALSE(selector().arrowView().isHidden());
  EXPECT_FALSE(selector().hiliteView().isHidden());
  EXPECT_FALSE(selector().isHilited());
  platform.pointer().moveTo(onScreen(*rows[0], {selector().frame().center().x + 2, 8}));
  platform.runFor(0.06);
  EXPECT_TRUE(selector().isHilited());
}

TEST_F(ProviderSelectorTest, ANewRowIsLitAndThrobsUntilAProviderIsChosen) {
  makePanelWithNewRow();
  EXPECT_EQ(selector().nameLabel().text(), "Select Contents:");
  EXPECT_TRUE(selector().isHilited());
  EXPECT_FALSE(selector().isThrobbing());
  platform.runFor(0.001);
  EXPECT_TRUE(selector().isThrobbing());
  EXPECT_EQ(hiliteAlpha(), 0);
  pointAtSelector();
  pointAway();
  EXPECT_TRUE(selector().isHilited());
  rows[0]->setProvider(TestProvider::withItems(2));
  EXPECT_FALSE(selector().isThrobbing());
  EXPECT_FALSE(selector().isHilited());
  EXPECT_EQ(selector().nameLabel().text(), "Test Items");
}

TEST_F(ProviderSelectorTest, TheThrobGoesUpToTheTopAndThenBetweenAQuarterAndIt) {
  makePanelWithNewRow();
  platform.runFor(0.001);
  struct Case {
    double until, alpha;
  };
  // One step of 0.025 each 0.025 second.
  const Case cases[] = {{0.026, 0.025}, {0.251, 0.25}, {0.951, 0.95},
                        {0.976, 0.975}, {1.001, 0.95}, {1.501, 0.45}};
  double now = 0.001;
  for (const Case& one : cases) {
    platform.runFor(one.until - now);
    now = one.until;
    EXPECT_NEAR(hiliteAlpha(), one.alpha, 0.0001) << one.until;
  }
  double lowest = 1, highest = 0;
  for (int tick = 0; tick < 120; ++tick) {
    platform.runFor(0.025);
    lowest = std::min(lowest, hiliteAlpha());
    highest = std::max(highest, hiliteAlpha());
  }
  EXPECT_NEAR(lowest, 0.25, 0.026);
  EXPECT_NEAR(highest, 0.975, 0.026);
}

TEST_F(ProviderSelectorTest, NamingEndsTheThrob) {
  makePanelWithNewRow();
  platform.runFor(0.3);
  selector().setProviderName("Mine");
  const double alpha = hiliteAlpha();
  EXPECT_FALSE(selector().isThrobbing());
  platform.runFor(0.5);
  EXPECT_EQ(hiliteAlpha(), alpha);
}

TEST_F(ProviderSelectorTest, AProviderChosenBeforeTheThrobBeginsKeepsItAway) {
  makePanelWithNewRow();
  rows[0]->setProvider(TestProvider::withItems(1));
  platform.runFor(0.5);
  EXPECT_FALSE(selector().isThrobbing());
}

TEST_F(ProviderSelectorTest, TheThrobRestsWhileThePanelIsDown) {
  makePanelWithNewRow();
  platform.runFor(0.3);
  close();
  platform.runFor(0.1);
  const double alpha = hiliteAlpha();
  platform.runFor(10);
  EXPECT_EQ(hiliteAlpha(), alpha);
  EXPECT_TRUE(selector().isThrobbing());
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(0.06);
  EXPECT_NE(hiliteAlpha(), alpha);
}

TEST_F(ProviderSelectorTest, ARowThatGoesTakesItsThrobAlong) {
  makePanelWithNewRow();
  platform.runFor(0.1);
  rows[0]->removeFromSuperview();
  auto& throbbing = selector();
  throbbing.prepareForDeallocation();
  EXPECT_FALSE(throbbing.isThrobbing());
}

TEST_F(ProviderSelectorTest, APressOpensTheSelectorMenu) {
  makePanel();
  pointAtSelector();
  platform.pointer().press();
  platform.pointer().release();
  ASSERT_EQ(platform.menuPresenter().shown().size(), 1U);
  EXPECT_EQ(platform.menuPresenter().shown()[0].title, "Selector");
  platform.pointer().press(1);
  platform.pointer().release(1);
  EXPECT_EQ(platform.menuPresenter().shown().size(), 2U);
}

TEST_F(ProviderSelectorTest, TheGearOpensTheConfigureMenuOnTheNextPass) {
  makePanel();
  providers[0]->configureTitles = {"Sort By Name"};
  pointAtSelector();
  platform.runFor(0.3);
  selector().configureButton().performClick();
  EXPECT_TRUE(platform.menuPresenter().shown().empty());
  platform.runFor(0.001);
  ASSERT_EQ(platform.menuPresenter().shown().size(), 1U);
  EXPECT_EQ(platform.menuPresenter().shown()[0].items, std::vector<std::string>{"Sort By Name"});
}

TEST_F(ProviderSelectorTest, AClickOnTheGearIsNoneOnTheSelector) {
  makePanel();
  providers[0]->configureTitles = {"Sort By Name"};
  pointAtSelector();
  platform.runFor(0.3);
  const Rect gear = selector().configureButton().frame();
  const Point inRow{selector().frame().x() + gear.center().x,
                    selector().frame().y() + gear.center().y};
  platform.pointer().moveTo(onScreen(*rows[0], inRow));
  platform.pointer().click();
  platform.runFor(0.001);
  ASSERT_EQ(platform.menuPresenter().shown().size(), 1U);
  EXPECT_EQ(platform.menuPresenter().shown()[0].items, std::vector<std::string>{"Sort By Name"});
}

}  // namespace
}  // namespace qb::test
