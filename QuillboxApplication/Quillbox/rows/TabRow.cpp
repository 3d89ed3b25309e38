#include "Quillbox/rows/TabRow.h"

#include "Platform/Graphics.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/ItemMenu.h"
#include "Quillbox/rows/ProviderSelector.h"

namespace qb {

namespace {

constexpr double rowCornerRadius = 25;
constexpr double rowBorderWidth = 3;
constexpr double selectorHeight = 20;
constexpr Color messageColor =
    Color::colorWithCalibratedRed(0.996078431372549, 0.611764705882353, 0.10980392156862745, 0.8);

}  // namespace

std::shared_ptr<TabRow> TabRow::create(const std::shared_ptr<HostView>& hostView, const Rect& frame,
                                       std::shared_ptr<TabRowProvider> provider) {
  std::shared_ptr<TabRow> row(new TabRow(hostView, frame, std::move(provider)));
  row->source().setTabRow(row);
  row->createViews();
  return row;
}

TabRow::TabRow(const std::shared_ptr<HostView>& hostView, const Rect& frame,
               std::shared_ptr<TabRowProvider> provider)
    : RoundedRectangleView(frame), hostView_(hostView), provider_(std::move(provider)) {
  setCornerRadius(rowCornerRadius);
  setBackgroundColor(quillbox->settings().tabRowColor());
  setRenderBorder(false);
  setBorderWidth(rowBorderWidth);
  setBorderColor(Color::white());
}

TabRow::~TabRow() {
  RunLoop::main().cancelPreviousPerformRequests(this);
  selectionViews_.eventCaptureView().setDelegate(nullptr);
  providerSelector_->prepareForDeallocation();
}

TabRowProvider& TabRow::source() const {
  static TabRowProvider nothing;
  return provider_ ? *provider_ : nothing;
}

void TabRow::createViews() {
  selectionViews_.addToRow(*this, *this);
  selectionViews_.removeButton().setAction([this] {
    if (const auto item = selectedItem_) removeItemFromTabRow(item, true);
  });
  selectionViews_.configureButton().setAction(
      [this] { configureSelectedItemWithMethod(ItemMenuMethodConfigureButton); });
  itemMenu_ = ItemMenu::create(*this);
  rowButtons_.addToRow();
  providerSelector_ = ProviderSelector::create(
      sharedFrom(*this), Rect::make(0, 0, bounds().width(), selectorHeight), provider_);
  addSubview(providerSelector_);
}

void TabRow::settingsChanged() { setBackgroundColor(quillbox->settings().tabRowColor()); }

void TabRow::setHilited(bool hilited) {
  Color color = quillbox->settings().tabRowColor();
  if (hilited) {
    color = Color::colorWithCalibratedRed(color.red() / 2, color.green() / 2, color.blue() / 2,
                                          color.alpha());
  }
  setRenderBorder(hilited);
  setBackgroundColor(color);
}

void TabRow::setCanBeDeleted(bool can) {
  canBeDeleted_ = can;
  if (!can) rowButtons_.showDeleteButton(false, true);
}

void TabRow::setCanBeMoved(bool can) {
  canBeMoved_ = can;
  if (!can) rowButtons_.showDragButton(false, true);
}

void TabRow::noteEnvironment(const PropertyList& environment) {
  source().noteEnvironment(environment);
}

void TabRow::hostViewWillBeDisplayed() {
  isDisplayed_ = true;
  selectionToRestore_.reset();
  itemSelectionEnabled_ = true;
  rowButtons_.hide();
  selectionViews_.hideButtons();
  mouseWithinProviderSelector_ = false;
  indexScrollOffset_ = 0;
  providerSelector_->owningTabRowWillBeDisplayed();
  if (!itemsHaveBeenCreated_ || source().haveItemsChanged()) haveProviderCreateItems();
  getItems();
  arrangeItemsWithMaintainScrollOffset(false, false);
  presentItems(false);
}

void TabRow::hostViewWasDisplayed() {
  providerSelector_->owningTabRowWasDisplayed();
  rowButtons_.makeReady(canBeDeleted_);
  selectionViews_.makeButtonsReady();
}

void TabRow::hostViewWillBeDismissed() {
  isDisplayed_ = false;
  setHilited(false);
  rowButtons_.hide();
  selectionViews_.hideButtons();
  source().itemsWillBeDismissed();
  exitMoreIndicatorHoverStates();
  providerSelector_->owningTabRowWillBeDismissed();
}

void TabRow::hostViewWasDismissed() {
  setSelectedItem(nullptr, SelectionMethodProgram);
  releaseItems();
  source().owningTabRowWasDismissed();
}

void TabRow::gainActiveStatusAsDefault(bool /*asDefault*/) {
  if (hasActiveStatus_) return;
  hasActiveStatus_ = true;
  source().gainActiveStatus();
}

void TabRow::relinquishActiveStatus() {
  if (!hasActiveStatus_) return;
  hasActiveStatus_ = false;
  source().relinquishActiveStatus();
  setSelectedItem(nullptr, SelectionMethodProgram);
  selectionToRestore_.reset();
}

void TabRow::updateProviderName() {
  providerSelector_->setProviderName(source().name());
  arrangeProviderSelector();
}

void TabRow::configureSelectedItemWithMethod(std::int32_t method) {
  itemMenu_->configureSelectedItemWithMethod(method);
}

void TabRow::popUpProviderSelectorMenuWithEvent(const Event& event) {
  providerMenus_.popUpProviderSelectorMenuWithEvent(event);
}

void TabRow::popUpProviderConfigureMenu() { providerMenus_.popUpProviderConfigureMenu(); }

void TabRow::popUpProviderConfigureMenuAtLocation(Point location) {
  providerMenus_.popUpProviderConfigureMenuAtLocation(location);
}

void TabRow::providerSelected(const MenuItem& sender) { providerMenus_.providerSelected(sender); }

void TabRow::showInstructionalMessage(const std::string& message) {
  if (!instructionalMessageLabel_) {
    instructionalMessageLabel_ =
        std::make_shared<LabelView>(quillbox->platform().graphics(), selfBounds_);
    instructionalMessageLabel_->setRenderBackground(false);
    instructionalMessageLabel_->setShadowed(true);
    instructionalMessageLabel_->setTextColor(messageColor);
    addSubview(instructionalMessageLabel_);
  }
  instructionalMessageLabel_->setText(message);
}

void TabRow::hideInstructionalMessage() {
  if (!instructionalMessageLabel_) return;
  instructionalMessageLabel_->removeFromSuperview();
  instructionalMessageLabel_.reset();
}

}  // namespace qb
