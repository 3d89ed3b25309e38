#include "QuillboxPreferences/PreferencesWindow.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QSlider>
#include <QTimer>
#include <QWheelEvent>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "Platform/Accessibility.h"
#include "Quillbox/activation/AccessibilityAccess.h"
#include "TemporaryFolder.h"

namespace qb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A home of the test's own, before anything asks where that is.
struct Home {
  Home() {
    qputenv("HOME", folder.path().c_str());
    qputenv("XDG_RUNTIME_DIR", folder.path("runtime").c_str());
  }
  TemporaryFolder folder;
};

class PreferencesWindowTest : public testing::Test {
 protected:
  /// The control of that name, from the top of the pages; `number` counts those of one name.
  template <class T>
  T& control(const std::string& name, int number = 0) const {
    for (T* const each : window.findChildren<T*>()) {
      if (each->accessibleName().toStdString() == name && number-- == 0) return *each;
    }
    throw std::out_of_range("no control " + name);
  }
  std::function<void()> click(const std::string& name) {
    return [this, name] { control<QAbstractButton>(name).click(); };
  }
  std::function<void()> slide(const std::string& name, int value, int number = 0) {
    return [=, this] { control<QSlider>(name, number).setValue(value); };
  }
  /// Clicks on a sample of a colour, then chooses in the dialog that comes up; an invalid colour
  /// chooses none.
  void chooseColor(const std::string& name, const QColor& color) {
    QTimer::singleShot(0, &window, [color] {
      const QPointer dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
      ASSERT_FALSE(dialog.isNull()) << "no dialog has come up";
      if (!color.isValid()) return dialog->reject();
      dialog->setCurrentColor(color);
      dialog->accept();
    });
    control<QAbstractButton>(name).click();
  }
  PropertyList saved() {
    model.flush();
    const auto file = files.dictionaryWithContentsOfFile(model.settings().pathToSettingsFile());
    return file.value_or(PropertyList::dictionary());
  }
  PropertyList savedDefaults() {
    model.change([](Settings&) {});
    return saved();
  }
  static std::vector<std::string> changedKeys(const PropertyList& before,
                                              const PropertyList& after) {
    std::vector<std::string> keys;
    for (const auto& entry : after.dictionaryValue()) {
      if (before.objectForKey(entry.key) != entry.value) keys.push_back(entry.key);
    }
    return keys;
  }
  PropertyList userDefault(const char* key) const {
    return DesktopUserDefaults(files).objectForKey(key);
  }

  const Home home;
  mutable DesktopFileSystem files;
  PreferencesModel model;
  PreferencesWindow window{model};
};

TEST_F(PreferencesWindowTest, EachSettingHasItsControlThatChangesItAlone) {
  const struct {
    const char* key;
    std::function<void()> act;
    double expected;
  } cases[] = {
      {"ActivatesOnCommandTab", click("Super-Tab"), 0},
      {"ActivatesOnOptionTab", click("Alt-Tab"), 0},
      {"ActivatesOnCommandKeyDoubleTap", click("Double tap of Super"), 1},
      {"ActivatesViaTopLeftCorner", click("Top left corner"), 1},
      {"ActivatesViaTopRightCorner", click("Top right corner"), 1},
      {"ActivatesViaBottomLeftCorner", click("Bottom left corner"), 1},
      {"ActivatesViaBottomRightCorner", click("Bottom right corner"), 1},
      {"ActivatesViaLeftEdge", click("Left edge: watched, but raises nothing"), 1},
      {"ActivatesViaBottomEdge", click("Bottom edge: watched, but raises nothing"), 1},
      {"ActivatesViaRightEdge", click("Right edge: watched, but raises nothing"), 1},
      {"KeepQuillboxActiveUponCommandTabActivation",
       click("After Super-Tab, when the keys are let go"), 1},
      {"KeepQuillboxActiveWhenMouseMovedWithCommandTabActivation",
       click("After Super-Tab, once the pointer has moved"), 0},
      {"KeepQuillboxActiveUponOptionTabActivation",
       click("After Alt-Tab, when the keys are let go"), 1},
      {"KeepQuillboxActiveWhenMouseMovedWithOptionTabActivation",
       click("After Alt-Tab, once the pointer has moved"), 0},
      {"TabRowColorAlpha", slide("Opacity", 40), 0.4},
      {"BackdropColorAlpha", slide("Opacity", 30, 1), 0.3},
      {"BackropBlurPercent", slide("Blur", 12), 12},
      {"UpperTabRowItemHaloHeight", slide("Largest items", 120), 120},
      {"LowerTabRowItemHaloHeight", slide("Smallest items", 60), 60},
      {"MaxHostViewWidthPercent", slide("Width of the panel", 90), 90},
      {"ClipboardManagerHistoryCaptureMode",
       [this] {
         QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
         QApplication::sendEvent(&control<QComboBox>("Record what is copied"), &up);
       },
       0},
      {"NotifyUserOfApplicationLaunch", click("Tell me when it starts an application"), 0},
      {"ActiveApplicationsProviderHidesAllBackgroundApplications",
       click("Keep background applications hidden"), 1},
  };
  PropertyList before = savedDefaults();
  std::set<std::string> left;
  for (const auto& entry : before.dictionaryValue()) left.insert(entry.key);
  for (const auto& each : cases) {
    each.act();
    const PropertyList after = saved();
    EXPECT_THAT(changedKeys(before, after), ElementsAre(each.key));
    EXPECT_FLOAT_EQ(static_cast<float>(after.floatForKey(each.key)),
                    static_cast<float>(each.expected))
        << each.key;
    before = after;
    left.erase(each.key);
  }
  // The two colours are chosen in tests of their own, and these three are the programs' affair.
  for (const char* const key :
       {"TabRowColorRed", "TabRowColorGreen", "TabRowColorBlue", "BackdropColorRed",
        "BackdropColorGreen", "BackdropColorBlue", "HasPerformedOneTimeStartUp",
        "OnePointOneSettingsHaveBeenSaved", "TwoPointOhSettingsHaveBeenSaved"}) {
    EXPECT_EQ(left.erase(key), 1U) << key;
  }
  EXPECT_THAT(left, IsEmpty());
}

TEST_F(PreferencesWindowTest, EachColorOnOfferIsTakenWhole) {
  for (const auto& offered : Settings::appearanceColors()) {
    const auto& name = std::get<std::string>(offered.at(kColorNameKey));
    const Color color = std::get<Color>(offered.at(kColorKey));
    click(name)();
    EXPECT_TRUE(control<QAbstractButton>(name).isChecked()) << name;
    const PropertyList file = saved();
    EXPECT_FLOAT_EQ(static_cast<float>(file.floatForKey("TabRowColorRed")),
                    static_cast<float>(color.red()));
    EXPECT_FLOAT_EQ(static_cast<float>(file.floatForKey("TabRowColorGreen")),
                    static_cast<float>(color.green()));
    EXPECT_FLOAT_EQ(static_cast<float>(file.floatForKey("TabRowColorBlue")),
                    static_cast<float>(color.blue()));
    EXPECT_FLOAT_EQ(static_cast<float>(file.floatForKey("TabRowColorAlpha")),
                    static_cast<float>(color.alpha()));
  }
}

TEST_F(PreferencesWindowTest, AnyOtherColorIsTakenWithItsOpacity) {
  const struct {
    const char* control;
    const char* prefix;
  } cases[] = {{"Any other colour", "TabRowColor"}, {"Colour", "BackdropColor"}};
  for (const auto& each : cases) {
    chooseColor(each.control, QColor(51, 102, 153, 204));
    const PropertyList file = saved();
    const auto component = [&](const char* name) {
      return file.floatForKey(std::string(each.prefix) + name);
    };
    EXPECT_NEAR(component("Red"), 0.2, 0.001) << each.prefix;
    EXPECT_NEAR(component("Green"), 0.4, 0.001) << each.prefix;
    EXPECT_NEAR(component("Blue"), 0.6, 0.001) << each.prefix;
    EXPECT_NEAR(component("Alpha"), 0.8, 0.001) << each.prefix;
  }
  EXPECT_EQ(control<QSlider>("Opacity").value(), 80);
  EXPECT_EQ(control<QSlider>("Opacity", 1).value(), 80);
}

TEST_F(PreferencesWindowTest, NoColorIsChosenByACancelledDialog) {
  const PropertyList before = savedDefaults();
  for (const char* const name : {"Any other colour", "Colour"}) chooseColor(name, QColor());
  EXPECT_THAT(changedKeys(before, saved()), IsEmpty());
}

TEST_F(PreferencesWindowTest, WhatAnotherProgramSavesMeanwhileStays) {
  savedDefaults();
  Settings other(files);
  click("Top left corner")();
  other.setMaxHostViewWidthPercent(44);
  other.save();
  const PropertyList file = saved();
  EXPECT_EQ(file.longForKey("MaxHostViewWidthPercent"), 44);
  EXPECT_TRUE(file.boolForKey("ActivatesViaTopLeftCorner"));
}

TEST_F(PreferencesWindowTest, AccessIsAllowedAndTiedToTheDesktopByItsSwitches) {
  EXPECT_TRUE(userDefault(kInputAccessIsDeniedKey).isNone());
  click("Allow Quillbox to see and take keys")();
  EXPECT_EQ(userDefault(kInputAccessIsDeniedKey), PropertyList(true));
  click("Allow Quillbox to see and take keys")();
  EXPECT_EQ(userDefault(kInputAccessIsDeniedKey), PropertyList(false));
  click("Heed the desktop's accessibility switch")();
  EXPECT_EQ(userDefault(kInputAccessFollowsDesktopKey), PropertyList(true));
}

TEST_F(PreferencesWindowTest, ShowsTheAccessThatIsPublished) {
  const auto words = [this] {
    window.refresh();
    std::vector<std::string> found;
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
      const std::string text = label->text().toStdString();
      if (text == "Granted" || text == "Not granted" || text.starts_with("Not known")) {
        found.push_back(text);
      }
    }
    return found;
  };
  EXPECT_THAT(words(), ElementsAre("Not known: Quillbox has not run yet"));
  const auto pasteboard =
      DesktopPasteboards(files).pasteboardWithName(std::string(quillboxInformationPasteboard));
  for (const bool access : {true, false}) {
    pasteboard->clearContents();
    pasteboard->setData(DesktopArchiver().archivedDataWithRootObject(PropertyList::dictionary(
                            {{std::string(QuillboxInformationHasAccessibilityAccessKey), access}})),
                        std::string(QuillboxInformationType));
    EXPECT_THAT(words(), ElementsAre(access ? "Granted" : "Not granted"));
  }
}

TEST_F(PreferencesWindowTest, AWheelThatScrollsThePageChangesNothing) {
  const PropertyList before = savedDefaults();
  std::vector<QWidget*> controls;
  for (auto* const slider : window.findChildren<QSlider*>()) controls.push_back(slider);
  for (auto* const box : window.findChildren<QComboBox*>()) controls.push_back(box);
  for (QWidget* const each : controls) {
    for (const int turn : {-120, 120}) {
      QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(each, &wheel);
    }
  }
  EXPECT_THAT(changedKeys(before, saved()), IsEmpty());
}

}  // namespace
}  // namespace qb
