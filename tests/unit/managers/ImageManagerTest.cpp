#include "Quillbox/managers/ImageManager.h"

#include <gtest/gtest.h>

#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb::test {
namespace {

TEST(ImageManagerTest, AnswersAtOnceAndBringsTheTrueIconLater) {
  SimulatedPlatform platform;
  ImageManager manager(platform.graphics());
  std::string later;
  const Image now = manager.iconForFile(
      "/apps/Editor.desktop", [&later](const Image& icon) { later = simulatedImageName(icon); });
  EXPECT_EQ(simulatedImageName(now), "generic icon");
  EXPECT_EQ(later, "");
  platform.runPending();
  EXPECT_EQ(later, "icon:/apps/Editor.desktop");
}

}  // namespace
}  // namespace qb::test
