#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

class FileSystem;

/// Is told when a setting has been given a value.
class SettingsDelegate {
 public:
  virtual ~SettingsDelegate() = default;
  virtual void settingsChanged() = 0;
};

/// The keys of an entry of `Settings::appearanceColors`.
inline constexpr std::string_view kColorNameKey = "ColorName";
inline constexpr std::string_view kColorKey = "Color";

/// The user's choices, kept in a file that the preference program writes too: whoever writes last
/// wins. A setter tells the delegate, and does not save. Main thread.
class Settings {
 public:
  /// The one object, made on first use and living as long as someone holds it. Reads the file
  /// anew on every call.
  static std::shared_ptr<Settings> sharedSettings(FileSystem& fileSystem);
  /// Has the defaults, over which the file is read.
  explicit Settings(FileSystem& fileSystem);

  void setDelegate(std::weak_ptr<SettingsDelegate> delegate) { delegate_ = std::move(delegate); }
  /// Signalled whenever a value may have changed, also where the delegate is not told.
  ChangeNotice& valuesChanged() { return valuesChanged_; }

  /// Reads the file. A missing or unreadable one changes nothing, and what a file of an older
  /// generation cannot know keeps its value. The delegate is not told: its caller does that.
  void load();
  /// Writes everything, and says that the file is of the present generation.
  void save();
  void log() const;
  std::string pathToSettingsFile() const;
  /// Derives `applicationActivationViaCornerIsInPlay` from the corners and edges.
  void maintainCornerIsInPlayFlag();

  /// One colour on offer: its name under `kColorNameKey`, itself under `kColorKey`.
  using AppearanceColor = std::map<std::string_view, std::variant<std::string, Color>>;
  static std::vector<AppearanceColor> appearanceColors();

  // How the panel comes up.
  bool applicationActivatesOnOptionTab() const { return activatesOnOptionTab_; }
  void setApplicationActivatesOnOptionTab(bool on) { store(activatesOnOptionTab_, on); }
  bool applicationActivatesOnCommandTab() const { return activatesOnCommandTab_; }
  void setApplicationActivatesOnCommandTab(bool on) { store(activatesOnCommandTab_, on); }
  bool applicationActivatesOnCommandKeyDoubleTap() const { return activatesOnDoubleTap_; }
  void setApplicationActivatesOnCommandKeyDoubleTap(bool on) { store(activatesOnDoubleTap_, on); }
  bool applicationActivatesViaTopLeftCorner() const { return viaTopLeftCorner_; }
  void setApplicationActivatesViaTopLeftCorner(bool on) { storePlace(viaTopLeftCorner_, on); }
  bool applicationActivatesViaTopRightCorner() const { return viaTopRightCorner_; }
  void setApplicationActivatesViaTopRightCorner(bool on) { storePlace(viaTopRightCorner_, on); }
  bool applicationActivatesViaBottomLeftCorner() const { return viaBottomLeftCorner_; }
  void setApplicationActivatesViaBottomLeftCorner(bool on) { storePlace(viaBottomLeftCorner_, on); }
  bool applicationActivatesViaBottomRightCorner() const { return viaBottomRightCorner_; }
  void setApplicationActivatesViaBottomRightCorner(bool on) {
    storePlace(viaBottomRightCorner_, on);
  }
  /// The edges count for `applicationActivationViaCornerIsInPlay` and activate nothing. Intended.
  bool applicationActivatesViaLeftEdge() const { return viaLeftEdge_; }
  void setApplicationActivatesViaLeftEdge(bool on) { storePlace(viaLeftEdge_, on); }
  bool applicationActivatesViaBottomEdge() const { return viaBottomEdge_; }
  void setApplicationActivatesViaBottomEdge(bool on) { storePlace(viaBottomEdge_, on); }
  bool applicationActivatesViaRightEdge() const { return viaRightEdge_; }
  void setApplicationActivatesViaRightEdge(bool on) { storePlace(viaRightEdge_, on); }
  bool applicationActivationViaCornerIsInPlay() const { return cornerIsInPlay_; }

  // How long it stays.
  bool keepQuillboxActiveWhenMouseMovedWithCommandTabActivation() const {
    return keepWhenMouseMovedWithCommandTab_;
  }
  void setKeepQuillboxActiveWhenMouseMovedWithCommandTabActivation(bool on) {
    store(keepWhenMouseMovedWithCommandTab_, on);
  }
  bool keepQuillboxActiveWhenMouseMovedWithOptionTabActivation() const {
    return keepWhenMouseMovedWithOptionTab_;
  }
  void setKeepQuillboxActiveWhenMouseMovedWithOptionTabActivation(bool on) {
    store(keepWhenMouseMovedWithOptionTab_, on);
  }
  bool keepQuillboxActiveUponCommandTabActivation() const { return keepUponCommandTab_; }
  void setKeepQuillboxActiveUponCommandTabActivation(bool on) { store(keepUponCommandTab_, on); }
  bool keepQuillboxActiveUponOptionTabActivation() const { return keepUponOptionTab_; }
  void setKeepQuillboxActiveUponOptionTabActivation(bool on) { store(keepUponOptionTab_, on); }

  // Its looks. Halo heights are points, from 30 to 200; setters take a value to that range.
  std::int64_t upperTabRowItemHaloHeight() const { return upperTabRowItemHaloHeight_; }
  void setUpperTabRowItemHaloHeight(std::int64_t height);
  std::int64_t lowerTabRowItemHaloHeight() const { return lowerTabRowItemHaloHeight_; }
  void setLowerTabRowItemHaloHeight(std::int64_t height);
  /// Of the screen's width, less its margins.
  std::int64_t maxHostViewWidthPercent() const { return maxHostViewWidthPercent_; }
  void setMaxHostViewWidthPercent(std::int64_t percent) {
    store(maxHostViewWidthPercent_, percent);
  }
  std::int64_t backdropBlurPercent() const { return backdropBlurPercent_; }
  void setBackdropBlurPercent(std::int64_t percent) { store(backdropBlurPercent_, percent); }

  /// The colour that the components were last made into. Setting the object leaves them alone and
  /// tells nobody.
  const Color& tabRowColor() const { return tabRowColor_; }
  void setTabRowColor(const Color& color);
  double tabRowColorRed() const { return tabRowColorRed_; }
  double tabRowColorGreen() const { return tabRowColorGreen_; }
  double tabRowColorBlue() const { return tabRowColorBlue_; }
  double tabRowColorAlpha() const { return tabRowColorAlpha_; }
  void setTabRowColorWithRed(double red, double green, double blue);
  /// At least 0.25: rows stay visible.
  void setTabRowColorAlpha(double alpha);
  void synthesizeTabRowColor();

  const Color& backdropColor() const { return backdropColor_; }
  void setBackdropColor(const Color& color);
  double backdropColorRed() const { return backdropColorRed_; }
  double backdropColorGreen() const { return backdropColorGreen_; }
  double backdropColorBlue() const { return backdropColorBlue_; }
  double backdropColorAlpha() const { return backdropColorAlpha_; }
  void setBackdropColorWithRed(double red, double green, double blue);
  void setBackdropColorAlpha(double alpha);
  void synthesizeBackdropColor();

  // Switches of other parts.
  bool activeApplicationsProviderHidesAllBackgroundApplications() const {
    return hidesAllBackgroundApplications_;
  }
  void setActiveApplicationsProviderHidesAllBackgroundApplications(bool on) {
    store(hidesAllBackgroundApplications_, on);
  }
  bool notifyUserOfApplicationLaunch() const { return notifyUserOfApplicationLaunch_; }
  void setNotifyUserOfApplicationLaunch(bool on) { store(notifyUserOfApplicationLaunch_, on); }
  std::int32_t clipboardManagerHistoryCaptureMode() const {
    return clipboardManagerHistoryCaptureMode_;
  }
  void setClipboardManagerHistoryCaptureMode(std::int32_t mode) {
    store(clipboardManagerHistoryCaptureMode_, mode);
  }
  bool applicationHasPerformedOneTimeStartUp() const { return hasPerformedOneTimeStartUp_; }
  void setApplicationHasPerformedOneTimeStartUp(bool done) {
    store(hasPerformedOneTimeStartUp_, done);
  }

  /// The marks of the file's generation: whether it was written by a program that knows the keys
  /// of that generation. Setting one tells nobody.
  bool onePointOneSettingsHaveBeenSaved() const { return onePointOneSettingsHaveBeenSaved_; }
  void setOnePointOneSettingsHaveBeenSaved(bool saved) {
    onePointOneSettingsHaveBeenSaved_ = saved;
  }
  bool twoPointOhSettingsHaveBeenSaved() const { return twoPointOhSettingsHaveBeenSaved_; }
  void setTwoPointOhSettingsHaveBeenSaved(bool saved) { twoPointOhSettingsHaveBeenSaved_ = saved; }

 private:
  struct Key;
  struct Table;

  template <class T>
  void store(T& field, T value) {
    field = value;
    notifyDelegate();
  }
  void storePlace(bool& field, bool on);
  void notifyDelegate();
  bool knows(const Key& key) const;

  FileSystem& fileSystem_;
  std::weak_ptr<SettingsDelegate> delegate_;
  ChangeNotice valuesChanged_;

  bool activatesOnOptionTab_ = true;
  bool activatesOnCommandTab_ = true;
  bool activatesOnDoubleTap_ = false;
  bool viaTopLeftCorner_ = false;
  bool viaTopRightCorner_ = false;
  bool viaBottomLeftCorner_ = false;
  bool viaBottomRightCorner_ = false;
  bool viaLeftEdge_ = false;
  bool viaBottomEdge_ = false;
  bool viaRightEdge_ = false;
  bool cornerIsInPlay_ = false;
  bool hasPerformedOneTimeStartUp_ = false;
  bool onePointOneSettingsHaveBeenSaved_ = false;
  bool keepWhenMouseMovedWithCommandTab_ = true;
  bool keepWhenMouseMovedWithOptionTab_ = true;
  bool keepUponCommandTab_ = false;
  bool keepUponOptionTab_ = false;
  std::int64_t lowerTabRowItemHaloHeight_ = 50;
  std::int64_t upperTabRowItemHaloHeight_ = 85;
  double tabRowColorRed_ = 0;
  double tabRowColorGreen_ = 0;
  double tabRowColorBlue_ = 0.125;
  double tabRowColorAlpha_ = 0.5;
  bool twoPointOhSettingsHaveBeenSaved_ = false;
  bool hidesAllBackgroundApplications_ = false;
  bool notifyUserOfApplicationLaunch_ = true;
  std::int32_t clipboardManagerHistoryCaptureMode_ = 1;
  std::int64_t maxHostViewWidthPercent_ = 66;
  std::int64_t backdropBlurPercent_ = 0;
  double backdropColorRed_ = 0;
  double backdropColorGreen_ = 0;
  double backdropColorBlue_ = 0;
  double backdropColorAlpha_ = 0;
  Color tabRowColor_;
  Color backdropColor_;
};

}  // namespace qb
