// How the panel comes up and goes.

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ActivationTest : public ActivationFixture {
 protected:
  int invocations() const {
    return static_cast<int>(countOf(*provider->itemLog, "item0: invoke") +
                            countOf(*provider->itemLog, "item1: invoke"));
  }
  int dismissals() const {
    return static_cast<int>(countOf(provider->log, "owningTabRowWasDismissed"));
  }
};

TEST_F(ActivationTest, IsInactiveAtLaunch) {
  EXPECT_EQ(quillbox->quillboxActivationState(), 0);
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
}

TEST_F(ActivationTest, EachMethodHasItsMaskAndItsKeepActiveVariant) {
  const struct {
    std::int32_t method;
    bool keepsUponCommandTab, keepsUponOptionTab;
    std::int32_t mask;
  } cases[] = {
      {0, false, false, 7}, {1, false, false, 41}, {2, false, false, 25}, {3, false, false, 13},
      {0, true, true, 7},   {1, true, false, 13},  {2, false, true, 13},  {3, true, true, 13},
      {1, false, true, 41}, {2, true, false, 25},
  };
  for (const auto& each : cases) {
    settings().setKeepQuillboxActiveUponCommandTabActivation(each.keepsUponCommandTab);
    settings().setKeepQuillboxActiveUponOptionTabActivation(each.keepsUponOptionTab);
    open(each.method);
    EXPECT_EQ(appDelegate->allowableDismissalMethods(), each.mask) << each.method;
    close();
  }
}

TEST_F(ActivationTest, UnknownMethodLeavesTheMaskAlone) {
  appDelegate->setAllowableDismissalMethodsForApplicationActivationMethod(2);
  appDelegate->setAllowableDismissalMethodsForApplicationActivationMethod(4);
  EXPECT_EQ(appDelegate->allowableDismissalMethods(), 25);
}

TEST_F(ActivationTest, PressesOutsideCountForEveryMethodButTheDoubleTap) {
  for (const std::int32_t method : {0, 1, 2, 3}) {
    open(method);
    EXPECT_EQ(appDelegate->externalMouseDownsDismissApplication(), method != 0);
    close();
  }
}

TEST_F(ActivationTest, MethodOutlivesTheDismissal) {
  open(ActivationMethodCorner);
  close();
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCorner);
}

TEST_F(ActivationTest, ActivationsDoNotNest) {
  open(ActivationMethodCorner);
  open(ActivationMethodCommandTab);
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCorner);
  EXPECT_EQ(appDelegate->allowableDismissalMethods(), 13);
}

TEST_F(ActivationTest, KeepActivePanelOutlivesTheKeys) {
  settings().setKeepQuillboxActiveUponCommandTabActivation(true);
  hold({KeyCodeLeftCommand, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(2);
  EXPECT_TRUE(isActive());
}

// The ways out.

TEST_F(ActivationTest, ReleaseOfCommandInvokesTheSelectedItem) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(1);
  EXPECT_FALSE(isActive());
  EXPECT_EQ(invocations(), 1);
  EXPECT_THAT(frontProcessRequests(), IsEmpty());
}

TEST_F(ActivationTest, ReleaseOfOptionInvokesTheSelectedItem) {
  hold({KeyCodeLeftOption, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  keyboard().release(KeyCodeLeftOption);
  platform.runFor(1);
  EXPECT_FALSE(isActive());
  EXPECT_EQ(invocations(), 1);
  EXPECT_THAT(frontProcessRequests(), IsEmpty());
}

TEST_F(ActivationTest, FreshPressOfCommandReactivatesThePreviousApplication) {
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(0.5);
  keyboard().press(KeyCodeLeftCommand);
  platform.runFor(1);
  EXPECT_FALSE(isActive());
  EXPECT_EQ(invocations(), 0);
  EXPECT_THAT(frontProcessRequests(), ElementsAre(editor));
}

TEST_F(ActivationTest, ReturnToTheCornerReactivatesThePreviousApplication) {
  settings().setApplicationActivatesViaTopLeftCorner(true);
  pointer().moveTo({0, 900});
  platform.runFor(0.5);
  ASSERT_TRUE(isActive());
  pointer().moveTo({100, 700});
  platform.runFor(0.5);
  pointer().moveTo({0, 900});
  platform.runFor(1);
  EXPECT_FALSE(isActive());
  EXPECT_EQ(invocations(), 0);
  EXPECT_THAT(frontProcessRequests(), ElementsAre(editor));
}

TEST_F(ActivationTest, DismissQuillboxEndsTheActivationAMomentLater) {
  open(ActivationMethodCommandDoubleTap);
  quillbox->dismissQuillbox();
  platform.runFor(0.009);
  EXPECT_TRUE(isActive());
  platform.runFor(0.001);
  EXPECT_FALSE(isActive());
  platform.runFor(1);
  EXPECT_EQ(invocations(), 0);
  EXPECT_THAT(frontProcessRequests(), IsEmpty());
}

TEST_F(ActivationTest, DismissQuillboxTwiceDismissesOnce) {
  open(ActivationMethodCommandDoubleTap);
  quillbox->dismissQuillbox();
  platform.runFor(0.005);
  quillbox->dismissQuillbox();
  platform.runFor(1);
  EXPECT_FALSE(isActive());
  EXPECT_EQ(dismissals(), 1);
}

TEST_F(ActivationTest, DismissQuillboxWhileInactiveDoesNothing) {
  quillbox->dismissQuillbox();
  platform.runFor(1);
  EXPECT_EQ(dismissals(), 0);
}

TEST_F(ActivationTest, DismissQuillboxIsForThePresentActivationOnly) {
  open(ActivationMethodCommandDoubleTap);
  quillbox->dismissQuillbox();
  close();
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(1);
  EXPECT_TRUE(isActive());
}

TEST_F(ActivationTest, PanelThatComesUpRightAfterASwitchStaysAndInvokes) {
  // The row asks for the dismissal of the panel that is just going.
  appDelegate->settingsChanged();
  keyboard().type(KeyCodeTab, {KeyCodeLeftCommand});
  platform.runFor(0.25);
  ASSERT_FALSE(isActive());
  ASSERT_EQ(invocations(), 1);
  hold({KeyCodeLeftCommand, KeyCodeTab});
  platform.runFor(0.2);
  EXPECT_TRUE(isActive());
  keyboard().release(KeyCodeTab);
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.25);
  EXPECT_FALSE(isActive());
  EXPECT_EQ(invocations(), 2);
}

TEST_F(ActivationTest, QuickReactivationCancelsTheReturnOfThePreviousApplication) {
  open(ActivationMethodCommandDoubleTap);
  appDelegate->dismissApplicationWithInvocation(false, true);
  platform.runFor(0.2);
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(1);
  EXPECT_THAT(frontProcessRequests(), IsEmpty());
}

// The pointer moves for real.

TEST_F(ActivationTest, SignificantMovementMakesThePanelPersist) {
  const struct {
    std::int32_t method;
    bool keepsWithCommandTab, keepsWithOptionTab;
    std::int32_t mask;
  } cases[] = {
      {1, true, false, 15}, {1, false, true, 41},  {2, false, true, 15},
      {2, true, false, 25}, {0, false, false, 15}, {3, false, false, 15},
  };
  keyboard().press(KeyCodeLeftCommand);
  keyboard().press(KeyCodeLeftOption);
  for (const auto& each : cases) {
    settings().setKeepQuillboxActiveWhenMouseMovedWithCommandTabActivation(
        each.keepsWithCommandTab);
    settings().setKeepQuillboxActiveWhenMouseMovedWithOptionTabActivation(each.keepsWithOptionTab);
    open(each.method);
    appDelegate->setContentViewAlphaValueToOne();
    quillbox->noteMouseHasMovedSignificatly();
    EXPECT_EQ(appDelegate->allowableDismissalMethods(), each.mask) << each.method;
    close();
  }
}

TEST_F(ActivationTest, MovementBeforeTheContentShowsDoesNotCount) {
  keyboard().press(KeyCodeLeftCommand);
  open(ActivationMethodCommandTab);
  quillbox->noteMouseHasMovedSignificatly();
  EXPECT_EQ(appDelegate->allowableDismissalMethods(), 41);
}

TEST_F(ActivationTest, PersistingPanelGoesWithTheFirstFreshPressOfCommand) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  platform.runFor(0.5);
  pointer().moveTo({200, 200});
  platform.runFor(0.5);
  // Held since before the movement, it does not count; nor does letting it go.
  EXPECT_TRUE(isActive());
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.5);
  EXPECT_TRUE(isActive());
  keyboard().press(KeyCodeLeftCommand);
  platform.runFor(0.25);
  EXPECT_FALSE(isActive());
}

}  // namespace
}  // namespace qb::test
