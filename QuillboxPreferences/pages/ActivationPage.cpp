#include "QuillboxPreferences/pages/ActivationPage.h"

#include <array>

#include "QuillboxPreferences/controls/Card.h"
#include "QuillboxPreferences/controls/ScreenPlaces.h"
#include "QuillboxPreferences/controls/ToggleSwitch.h"

namespace qb {

namespace {

struct PlaceSetting {
  bool (Settings::*getter)() const;
  void (Settings::*setter)(bool);
};

/// In the order of `ScreenPlaces::Place`.
constexpr std::array<PlaceSetting, ScreenPlaces::numberOfPlaces> placeSettings{{
    {&Settings::applicationActivatesViaTopLeftCorner,
     &Settings::setApplicationActivatesViaTopLeftCorner},
    {&Settings::applicationActivatesViaTopRightCorner,
     &Settings::setApplicationActivatesViaTopRightCorner},
    {&Settings::applicationActivatesViaBottomLeftCorner,
     &Settings::setApplicationActivatesViaBottomLeftCorner},
    {&Settings::applicationActivatesViaBottomRightCorner,
     &Settings::setApplicationActivatesViaBottomRightCorner},
    {&Settings::applicationActivatesViaLeftEdge, &Settings::setApplicationActivatesViaLeftEdge},
    {&Settings::applicationActivatesViaBottomEdge, &Settings::setApplicationActivatesViaBottomEdge},
    {&Settings::applicationActivatesViaRightEdge, &Settings::setApplicationActivatesViaRightEdge},
}};

}  // namespace

ActivationPage::ActivationPage(PreferencesModel& model) : model_(model) {
  widget_ = makePage(QStringLiteral("Activation"), [this](QVBoxLayout& page) {
    QVBoxLayout& keys = *addCard(page, QStringLiteral("KEYS"));
    addSetting(keys, QStringLiteral("Super-Tab"),
               QStringLiteral("Hold Super, press Tab. Super is the Command key."),
               &Settings::applicationActivatesOnCommandTab,
               &Settings::setApplicationActivatesOnCommandTab);
    addSetting(keys, QStringLiteral("Alt-Tab"),
               QStringLiteral("Hold Alt, press Tab. Alt is the Option key."),
               &Settings::applicationActivatesOnOptionTab,
               &Settings::setApplicationActivatesOnOptionTab);
    addSetting(keys, QStringLiteral("Double tap of Super"),
               QStringLiteral("The panel then stays until you are done."),
               &Settings::applicationActivatesOnCommandKeyDoubleTap,
               &Settings::setApplicationActivatesOnCommandKeyDoubleTap);

    QVBoxLayout& places = *addCard(page, QStringLiteral("SCREEN CORNERS"));
    places_ = new ScreenPlaces([this](ScreenPlaces::Place place, bool on) {
      const PlaceSetting& setting = placeSettings[static_cast<std::size_t>(place)];
      model_.change([setting, on](Settings& settings) { (settings.*setting.setter)(on); });
    });
    places_->setToolTip(QStringLiteral("Click a corner: the pointer there raises the panel."));
    addWideRow(places, places_);

    QVBoxLayout& stay = *addCard(page, QStringLiteral("KEEP THE PANEL UP"));
    addSetting(stay, QStringLiteral("After Super-Tab, when the keys are let go"), {},
               &Settings::keepQuillboxActiveUponCommandTabActivation,
               &Settings::setKeepQuillboxActiveUponCommandTabActivation);
    addSetting(stay, QStringLiteral("After Super-Tab, once the pointer has moved"), {},
               &Settings::keepQuillboxActiveWhenMouseMovedWithCommandTabActivation,
               &Settings::setKeepQuillboxActiveWhenMouseMovedWithCommandTabActivation);
    addSetting(stay, QStringLiteral("After Alt-Tab, when the keys are let go"), {},
               &Settings::keepQuillboxActiveUponOptionTabActivation,
               &Settings::setKeepQuillboxActiveUponOptionTabActivation);
    addSetting(stay, QStringLiteral("After Alt-Tab, once the pointer has moved"), {},
               &Settings::keepQuillboxActiveWhenMouseMovedWithOptionTabActivation,
               &Settings::setKeepQuillboxActiveWhenMouseMovedWithOptionTabActivation);
  });
  refresh();
}

void ActivationPage::addSetting(QVBoxLayout& card, const QString& title, const QString& caption,
                                Getter getter, Setter setter) {
  ToggleSwitch* const made = addSwitch(card, title, caption, [this, setter](bool on) {
    model_.change([setter, on](Settings& settings) { (settings.*setter)(on); });
  });
  refreshers_.push_back([this, made, getter] { made->setChecked((model_.settings().*getter)()); });
}

void ActivationPage::refresh() {
  for (const auto& refresher : refreshers_) refresher();
  for (std::size_t place = 0; place < placeSettings.size(); ++place) {
    places_->show(static_cast<ScreenPlaces::Place>(place),
                  (model_.settings().*placeSettings[place].getter)());
  }
}

}  // namespace qb
