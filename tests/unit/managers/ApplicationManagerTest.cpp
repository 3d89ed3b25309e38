#include "Quillbox/managers/ApplicationManager.h"

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

class ApplicationManagerTest : public QuillboxFixture {
 protected:
  ApplicationManager& manager() { return quillbox->applicationManager(); }
  SimulatedProcesses& processes() { return platform.processes(); }
  /// Refuses to hide, or comes back on its own, a moment after it was hidden.
  void comeBack(ProcessSerialNumber number) {
    platform.schedule(0.05, [this, number] { processes().setHidden(number, false); });
  }

  const ProcessSerialNumber files =
      platform.processes().launch({"com.apple.finder", "Files", "/apps/Files.desktop"});
  const ProcessSerialNumber editor =
      platform.processes().launchInFront({"org.editor", "Editor", "/apps/Editor.desktop"});
};

TEST_F(ApplicationManagerTest, HidesTheFrontApplication) {
  manager().hideFrontmostApplication();
  EXPECT_TRUE(processes().isHidden(editor));
  EXPECT_TRUE(manager().hidingFrontMostApplication());
  platform.runFor(0.1);
  EXPECT_FALSE(manager().hidingFrontMostApplication());
  EXPECT_TRUE(platform.workspace().activations().empty());
}

TEST_F(ApplicationManagerTest, PutsTheFileManagerBeforeAnApplicationThatDoesNotHide) {
  processes().setHidden(files, true);
  manager().hideFrontmostApplication();
  comeBack(editor);
  platform.runFor(0.1);
  EXPECT_FALSE(processes().isHidden(files));
  ASSERT_EQ(platform.workspace().activations().size(), 1U);
  EXPECT_EQ(platform.workspace().activations().front(), (SimulatedWorkspace::Activation{files, 0}));
  EXPECT_TRUE(manager().hidingFrontMostApplication());
  EXPECT_FALSE(processes().isHidden(editor));
  platform.runFor(0.1);
  EXPECT_TRUE(processes().isHidden(editor));
  EXPECT_FALSE(manager().hidingFrontMostApplication());
}

TEST_F(ApplicationManagerTest, GivesUpWithoutAFileManager) {
  processes().terminate(files);
  manager().hideFrontmostApplication();
  comeBack(editor);
  platform.runFor(0.5);
  EXPECT_FALSE(processes().isHidden(editor));
  EXPECT_FALSE(manager().hidingFrontMostApplication());
}

TEST_F(ApplicationManagerTest, StaysSuspendedWithoutAFrontApplication) {
  processes().bringToFront({});
  manager().hideFrontmostApplication();
  platform.runFor(0.5);
  EXPECT_TRUE(manager().hidingFrontMostApplication());
}

TEST_F(ApplicationManagerTest, KnowsWhetherThePanelIsUp) {
  EXPECT_FALSE(manager().quillboxUIIsVisible());
  open(ActivationMethodCorner);
  EXPECT_TRUE(manager().quillboxUIIsVisible());
  close();
  EXPECT_FALSE(manager().quillboxUIIsVisible());
}

TEST_F(ApplicationManagerTest, CommandHAnywhereHidesTheFrontApplication) {
  platform.keyboard().type(KeyCodeH, {KeyCodeLeftCommand});
  EXPECT_TRUE(processes().isHidden(editor));
}

}  // namespace
}  // namespace qb::test
