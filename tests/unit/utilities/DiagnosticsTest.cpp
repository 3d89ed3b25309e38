#include "Quillbox/activation/utilities/Diagnostics.h"

#include <gmock/gmock.h>

#include "Quillbox/rows/TabRow.h"
#include "support/QuillboxFixture.h"
#include "support/RecordingLog.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using DiagnosticsTest = QuillboxFixture;

TEST_F(DiagnosticsTest, RectanglesAndPointsAreLoggedWithSixDecimals) {
  RecordingLog log;
  Quillbox::logRect(Rect::make(1, -2.5, 1e6, 0.0000004));
  Quillbox::logPoint({0.1, -3});
  EXPECT_THAT(log.entries,
              ElementsAre("RECT: x: 1.000000, y: -2.500000, w: 1000000.000000, h: 0.000000",
                          "POINT: x: 0.100000, y: -3.000000"));
}

TEST_F(DiagnosticsTest, TheFlagIsToldOnlyWhenSet) {
  RecordingLog log;
  EXPECT_FALSE(quillbox->debugFlag());
  quillbox->breakOnDebugFlagSet();
  EXPECT_THAT(log.entries, IsEmpty());
  quillbox->setDebugFlag(true);
  quillbox->breakOnDebugFlagSet();
  EXPECT_THAT(log.entries, ElementsAre("Breaking on Debug Flag"));
}

TEST_F(DiagnosticsTest, ThePanelsViewsAreLoggedUnderABanner) {
  host().setAlphaValue(0.5);
  RecordingLog log;
  quillbox->debug();
  const auto frameOf = [](const Rect& frame) { return stringFromCGRect(frame); };
  EXPECT_THAT(
      log.entries,
      ElementsAre("-=-=-=-=-=-=-=-=-=- Quillbox Debug -=-=-=-=-=-=-=-=-=-=-=-=-",
                  "HostView: alpha: 0.500000, " + frameOf(host().frame()),
                  "Window: " + frameOf(appDelegate->window()->frame()),
                  "Content View: alpha: 0.000000, " +
                      frameOf(appDelegate->window()->contentView()->frame()),
                  "Tab Row 0: alpha: 1.000000, " + frameOf(host().tabRows().front()->frame())));
}

}  // namespace
}  // namespace qb::test
