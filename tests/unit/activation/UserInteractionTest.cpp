#include "Quillbox/activation/UserInteraction.h"

#include "Quillbox/activation/EventMonitorProtocol.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;

constexpr std::int64_t floating = 3, screenSaver = 1000;

class UserInteractionTest : public ActivationFixture {};

TEST_F(UserInteractionTest, KeysPassUntouchedAndCommandTabDoesNothing) {
  struct Monitor : EventMonitorProtocol {
    bool monitorKeyEvent(const TappedEvent&, EventType, std::uint16_t, EventFlags) override {
      ++calls;
      return false;
    }
    int calls = 0;
  };
  const auto monitor = std::make_shared<Monitor>();
  quillbox->addKeyEventMonitor(monitor);
  quillbox->beginUserInteraction();
  keyboard().type(KeyCodeTab, {KeyCodeLeftCommand});
  platform.runFor(0.1);
  EXPECT_FALSE(isActive());
  EXPECT_EQ(monitor->calls, 0);
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(KeyCodeTab));
}

TEST_F(UserInteractionTest, KeysAreNotHandledWhileThePanelIsUp) {
  open(ActivationMethodCommandTab);
  quillbox->beginUserInteraction();
  Event tab;
  tab.type = EventTypeKeyDown;
  tab.keyCode = KeyCodeTab;
  EXPECT_FALSE(appDelegate->keyDown(tab));
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(UserInteractionTest, BeginBringsTheLevelDownAndThisProcessForward) {
  open(ActivationMethodCommandTab);
  ASSERT_EQ(panel().level(), screenSaver);
  const auto requests = frontProcessRequests().size();
  quillbox->beginUserInteraction();
  EXPECT_EQ(panel().level(), floating);
  ASSERT_EQ(frontProcessRequests().size(), requests + 1);
  EXPECT_EQ(frontProcessRequests().back(), platform.processes().getCurrentProcess());
}

TEST_F(UserInteractionTest, Nests) {
  open(ActivationMethodCommandTab);
  quillbox->beginUserInteraction();
  const auto requests = frontProcessRequests().size();
  quillbox->beginUserInteraction();
  EXPECT_EQ(frontProcessRequests().size(), requests);
  quillbox->endUserInteraction();
  EXPECT_EQ(panel().level(), floating);
  EXPECT_EQ(appDelegate->userInteractionLevel(), 1);
  quillbox->endUserInteraction();
  EXPECT_EQ(panel().level(), screenSaver);
}

TEST_F(UserInteractionTest, EndGivesTheLevelOfTheActivationMethod) {
  const struct {
    std::int32_t method;
    std::int64_t level;
  } cases[] = {
      {ActivationMethodCommandDoubleTap, floating},
      {ActivationMethodCommandTab, screenSaver},
      {ActivationMethodOptionTab, screenSaver},
      {ActivationMethodCorner, screenSaver},
  };
  for (const auto& each : cases) {
    open(each.method);
    quillbox->beginUserInteraction();
    quillbox->endUserInteraction();
    EXPECT_EQ(panel().level(), each.level) << each.method;
    close();
  }
}

}  // namespace
}  // namespace qb::test
