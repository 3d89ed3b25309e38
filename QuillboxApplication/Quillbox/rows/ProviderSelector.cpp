#include "Quillbox/rows/ProviderSelector.h"

#include "Platform/Graphics.h"
#include "Platform/UserDefaults.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/ConfigureTip.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/views/Animation.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

constexpr double nameLabelHeight = 18;
constexpr double naturalPadding = 44;
constexpr double arrowFromRight = 21, arrowY = 7;
constexpr Point configureButtonOrigin{5, 3};
/// What the gear's button is larger than its image.
constexpr double configureButtonExcess = 1;
constexpr double hiliteAlpha = 0.5;
constexpr TimeInterval throbInterval = 0.025;
constexpr double throbStep = 0.025, throbLow = 0.25;
constexpr double tipDistance = 4;
constexpr TimeInterval tipDelay = 0.5, tipFadeDuration = 0.5;

}  // namespace

std::shared_ptr<ProviderSelector> ProviderSelector::create(
    const std::shared_ptr<TabRow>& tabRow, const Rect& frame,
    const std::shared_ptr<TabRowProvider>& provider) {
  std::shared_ptr<ProviderSelector> selector(new ProviderSelector(tabRow, frame, provider));
  for (const std::shared_ptr<View>& each :
       {std::shared_ptr<View>(selector->hiliteView_), std::shared_ptr<View>(selector->nameLabel_),
        std::shared_ptr<View>(selector->arrowView_),
        std::shared_ptr<View>(selector->configureButton_)}) {
    selector->addSubview(each);
  }
  selector->maintainHilite();
  return selector;
}

ProviderSelector::ProviderSelector(const std::shared_ptr<TabRow>& tabRow, const Rect& frame,
                                   const std::shared_ptr<TabRowProvider>& provider)
    : View(frame),
      tabRow_(tabRow),
      provider_(provider),
      hiliteView_(std::make_shared<RoundedRectangleView>()),
      nameLabel_(std::make_shared<LabelView>(quillbox->platform().graphics())),
      arrowView_(std::make_shared<ImageView>()) {
  Graphics& graphics = quillbox->platform().graphics();
  hiliteView_->setAlphaValue(0);
  nameLabel_->setRenderBackground(false);
  nameLabel_->setShadowed(true);
  arrowView_->setImage(graphics.imageNamed("DownArrow"));
  arrowView_->setAlphaValue(0);
  const Image gear = graphics.imageNamed("TabRowProviderConfigureButton");
  configureButton_ = std::make_shared<RowButton>(gear, gear.size());
  configureButton_->setHidden(false);
  configureButton_->setAction([this] { configureButtonPressed(); });
  showNameOfProvider();
}

ProviderSelector::~ProviderSelector() { prepareForDeallocation(); }

void ProviderSelector::prepareForDeallocation() {
  RunLoop::main().cancelPreviousPerformRequests(this);
  endThrobbing();
  tip_.reset();
}

void ProviderSelector::setFrame(const Rect& frame) {
  View::setFrame(frame);
  arrange();
}

void ProviderSelector::arrange() {
  hiliteView_->setFrame(bounds());
  const double textWidth = nameLabel_->textWidth();
  nameLabel_->setFrame(
      Rect::make(bounds().width() / 2 - textWidth / 2, 0, textWidth, nameLabelHeight));
  arrowView_->setFrame({{bounds().width() - arrowFromRight, arrowY}, arrowView_->image().size()});
  const Size gear = configureButton_->image().size();
  configureButton_->setFrame(
      {configureButtonOrigin,
       {gear.width + configureButtonExcess, gear.height + configureButtonExcess}});
  if (tip_) tip_->view()->setFrame(tipViewFrame());
}

double ProviderSelector::naturalWidth() const { return nameLabel_->textWidth() + naturalPadding; }

void ProviderSelector::setProvider(const std::shared_ptr<TabRowProvider>& provider) {
  removeConfigureTipWithAnimation(false);
  provider_ = provider;
  showNameOfProvider();
  maintainHilite();
  maintainConfigureButtonVisibility();
  RunLoop::main().performAfterDelay(this, "displayConfigureTip", tipDelay,
                                    [this] { displayConfigureTip(); });
}

void ProviderSelector::showNameOfProvider() {
  const auto provider = provider_.lock();
  setProviderName(provider ? provider->name() : "Select Contents:");
  if (provider) return;
  RunLoop::main().performAfterDelay(this, "beginThrobbing", 0, [this] { beginThrobbing(); });
}

void ProviderSelector::setProviderName(const std::string& name) {
  endThrobbing();
  nameLabel_->setText(name);
  arrange();
}

void ProviderSelector::beginThrobbing() {
  endThrobbing();
  throbDelta_ = throbStep;
  hiliteView_->setBackgroundColor(quillbox->settings().tabRowColor());
  hiliteView_->setAlphaValue(0);
  throbTimer_ = RunLoop::main().scheduleTimer(throbInterval, true,
                                              [this](RunLoopTimer& timer) { throb(timer); });
}

void ProviderSelector::throb(RunLoopTimer& timer) {
  const Window* const panel = window();
  if (panel == nullptr || !panel->isVisible()) {
    timer.restUntilSignalled({&displayed_});
    return;
  }
  const double alpha = hiliteView_->alphaValue() + throbDelta_;
  hiliteView_->setAlphaValue(alpha);
  if (throbDelta_ > 0 ? alpha >= 1 - throbDelta_ : alpha <= throbLow) throbDelta_ = -throbDelta_;
}

void ProviderSelector::endThrobbing() {
  RunLoop::main().cancelPreviousPerformRequests(this, "beginThrobbing");
  if (!throbTimer_) return;
  throbTimer_->invalidate();
  throbTimer_.reset();
}

void ProviderSelector::maintainHilite() {
  setHilited(provider_.expired() || mouseIsWithinView_ || tip_);
}

void ProviderSelector::setHilited(bool hilited) {
  if (hilited == hilited_) return;
  hilited_ = hilited;
  hiliteView_->setBackgroundColor(quillbox->settings().tabRowColor());
  hiliteView_->animator().setAlphaValue(hilited ? hiliteAlpha : 0);
  arrowView_->animator().setAlphaValue(hilited ? 1 : 0);
  configureButton_->animator().setAlphaValue(hilited ? 1 : 0);
  maintainConfigureButtonVisibility();
}

bool ProviderSelector::canBeConfigured() const {
  const auto provider = provider_.lock();
  return provider && provider->canBeConfigured();
}

void ProviderSelector::maintainConfigureButtonVisibility() {
  configureButton_->setHidden(!canBeConfigured());
}

void ProviderSelector::mouseEntered() {
  mouseIsWithinView_ = true;
  maintainHilite();
}

void ProviderSelector::mouseExited() {
  mouseIsWithinView_ = false;
  maintainHilite();
}

void ProviderSelector::owningTabRowWillBeDisplayed() {
  arrowView_->setHidden(true);
  hiliteView_->setHidden(true);
  mouseIsWithinView_ = false;
  maintainHilite();
}

void ProviderSelector::owningTabRowWasDisplayed() {
  arrowView_->setHidden(false);
  hiliteView_->setHidden(false);
  displayed_.signal();
}

void ProviderSelector::owningTabRowWillBeDismissed() { owningTabRowWillBeDisplayed(); }

void ProviderSelector::mouseDown(const Event& event) {
  // The panel may do away with the row while its menu is open.
  const auto self = shared_from_this();
  if (const auto row = tabRow_.lock()) row->popUpProviderSelectorMenuWithEvent(event);
}

void ProviderSelector::rightMouseDown(const Event& event) { mouseDown(event); }

void ProviderSelector::configureButtonPressed() {
  removeConfigureTipWithAnimation(true);
  acknowledgeConfigureTip();
  if (!canBeConfigured()) return;
  RunLoop::main().performAfterDelay(this, "popUpProviderConfigureMenu", 0, [this] {
    if (const auto row = tabRow_.lock()) row->popUpProviderConfigureMenu();
  });
}

Rect ProviderSelector::tipViewFrame() const {
  return Rect::make(frame().x() + hiliteView_->frame().x() - tipDistance - ConfigureTip::width,
                    frame().y(), ConfigureTip::width, hiliteView_->frame().height());
}

void ProviderSelector::displayConfigureTip() {
  const auto row = tabRow_.lock();
  if (!row || !canBeConfigured() || tip_ || hasConfigureTipBeenAcknowledged()) return;
  tip_ = std::make_unique<ConfigureTip>(
      quillbox->platform().graphics(), tipViewFrame(), [this] { tipViewCloseButtonPressed(); },
      [this] { removeConfigureTipWithAnimation(true); });
  row->addSubview(tip_->view());
  maintainHilite();
}

void ProviderSelector::removeConfigureTipWithAnimation(bool animate) {
  if (!tip_) return;
  tip_->endTimer();
  if (!animate) {
    tip_.reset();
    maintainHilite();
    return;
  }
  tip_->view()->animator().setAlphaValue(0);
  RunLoop::main().performAfterDelay(
      this, "removeConfigureTip", tipFadeDuration,
      [this, faded = std::weak_ptr<RoundedRectangleView>(tip_->view())] {
        // Another tip may have come in its place.
        if (tip_ && tip_->view() == faded.lock()) removeConfigureTipWithAnimation(false);
      });
}

void ProviderSelector::tipViewCloseButtonPressed() {
  removeConfigureTipWithAnimation(true);
  acknowledgeConfigureTip();
}

std::string ProviderSelector::acknowledgementKey() const {
  const auto provider = provider_.lock();
  return provider ? stringWithFormat("Configure Tip Acknowledged for: %@", provider->className())
                  : std::string();
}

bool ProviderSelector::hasConfigureTipBeenAcknowledged() const {
  return !quillbox->platform().userDefaults().objectForKey(acknowledgementKey()).isNone();
}

void ProviderSelector::acknowledgeConfigureTip() {
  const std::string key = acknowledgementKey();
  if (!key.empty()) quillbox->platform().userDefaults().setObject(true, key);
}

}  // namespace qb
