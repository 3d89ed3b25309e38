// Scripts in files, and pasting by a script.

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class ScriptFilesTest : public ActivationFixture {
 protected:
  void put(const std::string& contents) { platform.fileSystem().putRaw(path, contents); }
  const std::string path = "/home/user/Scripts/a.scpt";
};

TEST_F(ScriptFilesTest, TheExtensionDecides) {
  for (const char* name : {"a.scpt", "/x/A.SCPT", "/x.app/a.b.Scpt"}) {
    EXPECT_TRUE(Quillbox::fileAtPathIsAppleScriptFile(name)) << name;
  }
  for (const char* name : {"", "scpt", ".scpt", "a.txt", "a.scptd", "/x.scpt/a"}) {
    EXPECT_FALSE(Quillbox::fileAtPathIsAppleScriptFile(name)) << name;
  }
}

TEST_F(ScriptFilesTest, RunsAThirdOfASecondLater) {
  put("do shell script \"early\"");
  quillbox->executeAppleScriptAtPath(path);
  platform.runFor(0.32);
  EXPECT_THAT(platform.scripts().shellCommands(), IsEmpty());
  // What counts is what the file holds by then.
  put("do shell script \"late\"");
  platform.runFor(0.02);
  EXPECT_THAT(platform.scripts().shellCommands(), ElementsAre("late"));
}

TEST_F(ScriptFilesTest, AMissingFileIsToldInTheLog) {
  quillbox->executeAppleScriptAtPath("/none.scpt");
  platform.runFor(0.4);
  EXPECT_THAT(platform.log(), Contains("The script /none.scpt cannot be read"));
  EXPECT_THAT(platform.scripts().executed(), IsEmpty());
}

TEST_F(ScriptFilesTest, ACompiledFileIsToldInTheLog) {
  put(std::string("FasdUAS 1.101.10\x0e\0\0", 19));
  quillbox->executeAppleScriptAtPath(path);
  platform.runFor(0.4);
  EXPECT_THAT(platform.log(), Contains("The script /home/user/Scripts/a.scpt is compiled: only "
                                       "scripts in plain text can be run"));
  EXPECT_THAT(platform.scripts().executed(), IsEmpty());
}

TEST_F(ScriptFilesTest, AnErrorOfTheScriptGoesToTheLog) {
  put("foo");
  quillbox->executeAppleScriptAtPath(path);
  platform.runFor(0.4);
  EXPECT_THAT(platform.log(), Contains(StartsWith("Quillbox AppleScript Error: ")));
}

TEST_F(ScriptFilesTest, NothingRunsForAProgramThatHasGone) {
  put("do shell script \"x\"");
  quillbox->executeAppleScriptAtPath(path);
  row().setProvider(nullptr);
  appDelegate.reset();
  platform.runFor(1);
  EXPECT_THAT(platform.scripts().executed(), IsEmpty());
  appDelegate = AppDelegate::create(platform);
  appDelegate->applicationDidFinishLaunching();
}

TEST_F(ScriptFilesTest, PastingPressesCommandV) {
  quillbox->invokePasteCommand();
  EXPECT_THAT(platform.scripts().executed(),
              ElementsAre("tell application \"System Events\" to key code 9 using command "
                          "down\r"));
  const auto& received = keyboard().frontApplicationReceived();
  ASSERT_EQ(received.size(), 2U);
  EXPECT_EQ(received[0],
            (SimulatedKeyboard::Received{editor, EventTypeKeyDown, KeyCodeV, EventFlagCommand}));
  EXPECT_EQ(received[1],
            (SimulatedKeyboard::Received{editor, EventTypeKeyUp, KeyCodeV, EventFlagCommand}));
}

}  // namespace
}  // namespace qb::test
