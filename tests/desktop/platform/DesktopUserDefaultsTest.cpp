#include "PlatformDesktop/session/DesktopUserDefaults.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "PlatformDesktop/files/DesktopFileSystem.h"
#include "QuillboxCommon/Log.h"
#include "TemporaryFolder.h"

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class KeptLog : public LogSink {
 public:
  KeptLog() { setLogSink(this); }
  ~KeptLog() override { setLogSink(nullptr); }
  void write(std::string_view text) override { lines.emplace_back(text); }
  bool standardErrorIsTerminal() const override { return false; }

  std::vector<std::string> lines;
};

/// The folder of the preferences cannot be made: there is a file of its name.
class UnsavedDefaultsTest : public ::testing::Test {
 protected:
  UnsavedDefaultsTest() { folder_.write("Preferences", "in the way"); }

  PropertyList savedUnder(const std::string& key) {
    return DesktopUserDefaults(files_, path_).objectForKey(key);
  }
  void clearTheWay() { std::filesystem::remove(folder_.path("Preferences")); }

  KeptLog log_;
  TemporaryFolder folder_;
  const std::string path_ = folder_.path("Preferences/defaults.plist");
  DesktopFileSystem files_;
};

TEST_F(UnsavedDefaultsTest, HoldUntilTheEnd) {
  DesktopUserDefaults defaults(files_, path_);
  int changes = 0;
  defaults.setOnChange([&] { ++changes; });
  defaults.setObject("Welcomed", "2.5");
  defaults.setObject(true, "denied");
  EXPECT_EQ(defaults.objectForKey("2.5"), PropertyList("Welcomed"));
  EXPECT_TRUE(defaults.boolForKey("denied"));
  defaults.setObject({}, "2.5");
  EXPECT_TRUE(defaults.objectForKey("2.5").isNone());
  EXPECT_EQ(changes, 3);
  EXPECT_TRUE(savedUnder("denied").isNone());
}

TEST_F(UnsavedDefaultsTest, AreToldOnceWithTheirPlaceAndTheReason) {
  DesktopUserDefaults defaults(files_, path_);
  defaults.setObject("Welcomed", "2.5");
  defaults.setObject(1, "other");
  EXPECT_THAT(log_.lines,
              ElementsAre(path_ + " cannot be written, and what it is to hold lasts until the "
                                  "program ends: Not a directory"));
}

TEST_F(UnsavedDefaultsTest, AreSavedWithTheFirstThatCanBe) {
  DesktopUserDefaults defaults(files_, path_);
  defaults.setObject("Welcomed", "2.5");
  clearTheWay();
  defaults.setObject(1, "other");
  EXPECT_EQ(savedUnder("2.5"), PropertyList("Welcomed"));
  EXPECT_EQ(savedUnder("other"), PropertyList(1));
  EXPECT_THAT(log_.lines.back(), path_ + " has been written again.");
}

TEST_F(UnsavedDefaultsTest, StayRemovedThoughTheFileHasThem) {
  clearTheWay();
  DesktopUserDefaults defaults(files_, path_);
  defaults.setObject("Welcomed", "2.5");
  EXPECT_THAT(log_.lines, IsEmpty());
  // While it is removed there is a folder in the place of the file.
  std::filesystem::rename(path_, folder_.path("kept"));
  std::filesystem::create_directory(path_);
  defaults.setObject({}, "2.5");
  std::filesystem::remove(path_);
  std::filesystem::rename(folder_.path("kept"), path_);
  EXPECT_THAT(log_.lines, ElementsAre(HasSubstr("Is a directory")));
  defaults.setObject(1, "other");
  EXPECT_TRUE(defaults.objectForKey("2.5").isNone());
  EXPECT_TRUE(savedUnder("2.5").isNone());
}

}  // namespace
}  // namespace qb
