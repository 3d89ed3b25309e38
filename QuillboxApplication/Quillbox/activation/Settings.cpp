#include "Quillbox/activation/Settings.h"

#include <algorithm>
#include <array>

#include "Platform/FileSystem.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

namespace {

constexpr const char* settingsFile = "~/Library/Preferences/com.vorlane.quillbox.settings";
constexpr std::int64_t leastHaloHeight = 30;
constexpr std::int64_t greatestHaloHeight = 200;
constexpr double leastTabRowColorAlpha = 0.25;

std::int64_t haloHeightInRange(std::int64_t height) {
  return std::clamp(height, leastHaloHeight, greatestHaloHeight);
}

/// A first generation wrote no marks; later ones say what they knew.
enum class Generation { Always, OnePointOne, TwoPointOh };

}  // namespace

struct Settings::Key {
  using Field = std::variant<bool Settings::*, std::int32_t Settings::*, std::int64_t Settings::*,
                             double Settings::*>;
  const char* name;
  Field field;
  Generation generation;

  void read(const PropertyList& file, Settings& settings) const {
    std::visit([&](auto member) { take(file, settings.*member); }, field);
  }
  void write(const Settings& settings, PropertyList& file) const {
    std::visit([&](auto member) { put(settings.*member, file); }, field);
  }

 private:
  void take(const PropertyList& file, bool& value) const { value = file.boolForKey(name); }
  void take(const PropertyList& file, std::int32_t& value) const {
    value = static_cast<std::int32_t>(file.longForKey(name));
  }
  void take(const PropertyList& file, std::int64_t& value) const { value = file.longForKey(name); }
  void take(const PropertyList& file, double& value) const { value = file.floatForKey(name); }
  void put(bool value, PropertyList& file) const { file.setBool(value, name); }
  void put(std::int32_t value, PropertyList& file) const { file.setLong(value, name); }
  void put(std::int64_t value, PropertyList& file) const { file.setLong(value, name); }
  void put(double value, PropertyList& file) const {
    file.setFloat(static_cast<float>(value), name);
  }
};

/// All keys, in the order of the file. A mark stands before the keys that it vouches for, so that
/// one walk reads them all.
struct Settings::Table {
  static constexpr Generation always = Generation::Always;
  static constexpr Generation onePointOne = Generation::OnePointOne;
  static constexpr Generation twoPointOh = Generation::TwoPointOh;
  static inline const std::array keys{
      Key{"ActivatesOnOptionTab", &Settings::activatesOnOptionTab_, always},
      Key{"ActivatesOnCommandTab", &Settings::activatesOnCommandTab_, always},
      Key{"ActivatesViaTopLeftCorner", &Settings::viaTopLeftCorner_, always},
      Key{"ActivatesViaTopRightCorner", &Settings::viaTopRightCorner_, always},
      Key{"ActivatesViaBottomLeftCorner", &Settings::viaBottomLeftCorner_, always},
      Key{"ActivatesViaBottomRightCorner", &Settings::viaBottomRightCorner_, always},
      Key{"ActivatesOnCommandKeyDoubleTap", &Settings::activatesOnDoubleTap_, always},
      Key{"ActivatesViaLeftEdge", &Settings::viaLeftEdge_, always},
      Key{"ActivatesViaBottomEdge", &Settings::viaBottomEdge_, always},
      Key{"ActivatesViaRightEdge", &Settings::viaRightEdge_, always},
      Key{"HasPerformedOneTimeStartUp", &Settings::hasPerformedOneTimeStartUp_, always},
      Key{"OnePointOneSettingsHaveBeenSaved", &Settings::onePointOneSettingsHaveBeenSaved_, always},
      Key{"KeepQuillboxActiveWhenMouseMovedWithCommandTabActivation",
          &Settings::keepWhenMouseMovedWithCommandTab_, onePointOne},
      Key{"KeepQuillboxActiveWhenMouseMovedWithOptionTabActivation",
          &Settings::keepWhenMouseMovedWithOptionTab_, onePointOne},
      Key{"KeepQuillboxActiveUponCommandTabActivation", &Settings::keepUponCommandTab_,
          onePointOne},
      Key{"KeepQuillboxActiveUponOptionTabActivation", &Settings::keepUponOptionTab_, onePointOne},
      Key{"LowerTabRowItemHaloHeight", &Settings::lowerTabRowItemHaloHeight_, onePointOne},
      Key{"UpperTabRowItemHaloHeight", &Settings::upperTabRowItemHaloHeight_, onePointOne},
      Key{"TabRowColorRed", &Settings::tabRowColorRed_, onePointOne},
      Key{"TabRowColorGreen", &Settings::tabRowColorGreen_, onePointOne},
      Key{"TabRowColorBlue", &Settings::tabRowColorBlue_, onePointOne},
      Key{"TabRowColorAlpha", &Settings::tabRowColorAlpha_, onePointOne},
      Key{"TwoPointOhSettingsHaveBeenSaved", &Settings::twoPointOhSettingsHaveBeenSaved_, always},
      Key{"ActiveApplicationsProviderHidesAllBackgroundApplications",
          &Settings::hidesAllBackgroundApplications_, twoPointOh},
      Key{"NotifyUserOfApplicationLaunch", &Settings::notifyUserOfApplicationLaunch_, twoPointOh},
      Key{"ClipboardManagerHistoryCaptureMode", &Settings::clipboardManagerHistoryCaptureMode_,
          twoPointOh},
      Key{"MaxHostViewWidthPercent", &Settings::maxHostViewWidthPercent_, twoPointOh},
      // A letter is missing in the files that are out there, so it is missing here.
      Key{"BackropBlurPercent", &Settings::backdropBlurPercent_, twoPointOh},
      Key{"BackdropColorRed", &Settings::backdropColorRed_, twoPointOh},
      Key{"BackdropColorGreen", &Settings::backdropColorGreen_, twoPointOh},
      Key{"BackdropColorBlue", &Settings::backdropColorBlue_, twoPointOh},
      Key{"BackdropColorAlpha", &Settings::backdropColorAlpha_, twoPointOh},
  };
};

std::shared_ptr<Settings> Settings::sharedSettings(FileSystem& fileSystem) {
  static std::weak_ptr<Settings> shared;
  std::shared_ptr<Settings> settings = shared.lock();
  if (!settings) shared = settings = std::make_shared<Settings>(fileSystem);
  settings->load();
  return settings;
}

Settings::Settings(FileSystem& fileSystem) : fileSystem_(fileSystem) {
  synthesizeTabRowColor();
  synthesizeBackdropColor();
  load();
}

bool Settings::knows(const Key& key) const {
  switch (key.generation) {
    case Generation::Always:
      return true;
    case Generation::OnePointOne:
      return onePointOneSettingsHaveBeenSaved_;
    case Generation::TwoPointOh:
      return twoPointOhSettingsHaveBeenSaved_;
  }
  return false;
}

void Settings::load() {
  if (const auto file = fileSystem_.dictionaryWithContentsOfFile(pathToSettingsFile())) {
    for (const Key& key : Table::keys) {
      if (knows(key)) key.read(*file, *this);
    }
    if (onePointOneSettingsHaveBeenSaved_) {
      tabRowColorAlpha_ = std::max(leastTabRowColorAlpha, tabRowColorAlpha_);
      synthesizeTabRowColor();
      lowerTabRowItemHaloHeight_ = haloHeightInRange(lowerTabRowItemHaloHeight_);
      upperTabRowItemHaloHeight_ = haloHeightInRange(upperTabRowItemHaloHeight_);
    }
    if (twoPointOhSettingsHaveBeenSaved_) synthesizeBackdropColor();
  }
  maintainCornerIsInPlayFlag();
  valuesChanged_.signal();
}

void Settings::save() {
  onePointOneSettingsHaveBeenSaved_ = true;
  twoPointOhSettingsHaveBeenSaved_ = true;
  PropertyList file = PropertyList::dictionary();
  for (const Key& key : Table::keys) key.write(*this, file);
  fileSystem_.writeToFile(file, pathToSettingsFile());
}

void Settings::log() const {
  const auto line = [](std::string_view format, bool flag) {
    qb::log(stringWithFormat(format, flag));
  };
  qb::log("---------------- Settings --------------------");
  line("applicationActivatesViaBottomEdge: %i", viaBottomEdge_);
  line("applicationActivatesViaLeftEdge: %i", viaLeftEdge_);
  line("applicationActivatesViaRightEdge: %i", viaRightEdge_);
  line("applicationActivatesViaTopLeftCorner: %i", viaTopLeftCorner_);
  line("applicationActivatesViaTopRightCorner: %i", viaTopRightCorner_);
  line("applicationActivatesViaBottomLeftCorner: %i", viaBottomLeftCorner_);
  line("applicationActivatesViaBottomRightCorner: %i", viaBottomRightCorner_);
  line("applicationActivatesOnCommandKeyDoubleTap: %i", activatesOnDoubleTap_);
  line("applicationActivatesOnCommandTab: %i", activatesOnCommandTab_);
  line("applicationActivatesOnOptionTab: %i", activatesOnOptionTab_);
  line("applicationActivationViaCornerIsInPlay: %i", cornerIsInPlay_);
  line("applicationHasPerformedOneTimeStartUp: %i", hasPerformedOneTimeStartUp_);
}

std::string Settings::pathToSettingsFile() const {
  return fileSystem_.stringByExpandingTildeInPath(settingsFile);
}

void Settings::maintainCornerIsInPlayFlag() {
  cornerIsInPlay_ = viaTopLeftCorner_ || viaTopRightCorner_ || viaBottomLeftCorner_ ||
                    viaBottomRightCorner_ || viaLeftEdge_ || viaBottomEdge_ || viaRightEdge_;
}

void Settings::setUpperTabRowItemHaloHeight(std::int64_t height) {
  store(upperTabRowItemHaloHeight_, haloHeightInRange(height));
}

void Settings::setLowerTabRowItemHaloHeight(std::int64_t height) {
  store(lowerTabRowItemHaloHeight_, haloHeightInRange(height));
}

void Settings::setTabRowColor(const Color& color) { tabRowColor_ = color; }

void Settings::setTabRowColorWithRed(double red, double green, double blue) {
  tabRowColorRed_ = red;
  tabRowColorGreen_ = green;
  tabRowColorBlue_ = blue;
  synthesizeTabRowColor();
  notifyDelegate();
}

void Settings::setTabRowColorAlpha(double alpha) {
  tabRowColorAlpha_ = std::max(leastTabRowColorAlpha, alpha);
  synthesizeTabRowColor();
  notifyDelegate();
}

void Settings::synthesizeTabRowColor() {
  tabRowColor_ = Color::colorWithCalibratedRed(tabRowColorRed_, tabRowColorGreen_, tabRowColorBlue_,
                                               tabRowColorAlpha_);
}

void Settings::setBackdropColor(const Color& color) { backdropColor_ = color; }

void Settings::setBackdropColorWithRed(double red, double green, double blue) {
  backdropColorRed_ = red;
  backdropColorGreen_ = green;
  backdropColorBlue_ = blue;
  synthesizeBackdropColor();
  notifyDelegate();
}

void Settings::setBackdropColorAlpha(double alpha) {
  backdropColorAlpha_ = alpha;
  synthesizeBackdropColor();
  notifyDelegate();
}

void Settings::synthesizeBackdropColor() {
  backdropColor_ = Color::colorWithCalibratedRed(backdropColorRed_, backdropColorGreen_,
                                                 backdropColorBlue_, backdropColorAlpha_);
}

void Settings::storePlace(bool& field, bool on) {
  field = on;
  maintainCornerIsInPlayFlag();
  notifyDelegate();
}

void Settings::notifyDelegate() {
  valuesChanged_.signal();
  if (const auto delegate = delegate_.lock()) delegate->settingsChanged();
}

std::vector<Settings::AppearanceColor> Settings::appearanceColors() {
  struct Named {
    const char* name;
    double red, green, blue, alpha;
  };
  static constexpr Named offered[] = {
      {"Quillbox Blue", 0.0, 0.0, 0.125, 0.5},
      {"Neon Blue", 0.0, 0.0, 0.75, 0.5},
      {"Blue", 0.0, 0.0, 0.25, 0.5},
      {"Dark Red", 0.25, 0.0, 0.0, 0.5},
      // The only one that is less translucent. Intended.
      {"Neon Red", 1.0, 0.0, 0.0, 0.75},
      {"Red", 0.75, 0.0, 0.0, 0.5},
      {"Dark Green", 0.0, 0.125, 0.0, 0.5},
      {"Neon Green", 0.0, 0.75, 0.0, 0.5},
      {"Green", 0.0, 0.25, 0.0, 0.5},
      {"Dark Orange", 0.55, 0.125, 0.0, 0.5},
      {"Neon Orange", 1.0, 0.33, 0.0, 0.5},
      {"Orange", 0.75, 0.25, 0.0, 0.5},
      {"Dark Yellow", 0.5, 0.5, 0.0, 0.5},
      {"Neon Yellow", 1.0, 1.0, 0.0, 0.5},
      {"Yellow", 0.75, 0.75, 0.0, 0.5},
      {"Aqua", 0.0, 0.5, 0.5, 0.5},
      {"Purple", 0.5, 0.0, 0.5, 0.5},
      {"Pink", 0.99, 0.46, 0.64, 0.5},
      {"Brown", 0.42, 0.32, 0.2, 0.5},
      {"Black", 0.0, 0.0, 0.0, 0.5},
  };
  std::vector<AppearanceColor> colors;
  for (const Named& each : offered) {
    colors.push_back(
        {{kColorNameKey, std::string(each.name)},
         {kColorKey, Color::colorWithCalibratedRed(each.red, each.green, each.blue, each.alpha)}});
  }
  return colors;
}

}  // namespace qb
