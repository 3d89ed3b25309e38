#include "Quillbox/windows/ItemChooserWindowController.h"

#include <utility>

#include "Platform/Graphics.h"
#include "Platform/KeyCodes.h"
#include "Platform/Pointer.h"
#include "Platform/WindowServer.h"
#include "Platform/Workspace.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/activation/UserInteractionBracket.h"
#include "Quillbox/managers/PrimaryScreen.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

/// What the halo is larger than the icon, and the window than the halos.
constexpr double haloExcess = 8, windowHeightBesidesHalo = 52, windowWidthBesidesItems = 48;
constexpr double firstItemX = 24;
constexpr double cornerRadius = 25;
constexpr double titleY = 3, titleHeight = 20, titlePadding = 30;
/// An item's cell: its view's frame, moved and widened by these.
constexpr double cellShift = -12, cellExcess = 48;
constexpr TimeInterval watchInterval = 0.05;

}  // namespace

/// Gives the controller what falls anywhere on the window.
class ItemChooserWindowController::BackgroundView : public RoundedRectangleView {
 public:
  BackgroundView(const Rect& frame, ItemChooserWindowController& controller)
      : RoundedRectangleView(frame), controller_(controller) {}
  bool acceptsFirstResponder() const override { return true; }
  View* hitTest(Point point) override { return contains(frame(), point) ? this : nullptr; }
  void keyDown(const Event& event) override { controller_.keyDown(event); }
  void mouseDown(const Event& /*event*/) override { controller_.mouseDown(); }

 private:
  ItemChooserWindowController& controller_;
};

ItemChooserWindowController::ItemChooserWindowController(const std::string& title,
                                                         std::vector<std::shared_ptr<Item>> items,
                                                         Size itemSize, Completion completion)
    : items_(std::move(items)), itemSize_(itemSize), completionBlock_(std::move(completion)) {
  WindowServer& windowServer = quillbox->platform().windowServer();
  const double width =
      itemSize.width * static_cast<double>(items_.size()) + windowWidthBesidesItems;
  const double height = itemSize.height + haloExcess + windowHeightBesidesHalo;
  window_ = std::make_unique<BorderlessWindow>(windowServer, Rect::make(0, 0, width, height));
  window_->setHasShadow(false);
  window_->setOpaque(false);
  window_->setBackgroundColor(Color::clear());
  window_->setLevel(windowServer.windowLevelForKey(WindowLevelKeyFloating));
  createViews(title);
}

ItemChooserWindowController::~ItemChooserWindowController() {
  if (watchTimer_) watchTimer_->invalidate();
}

void ItemChooserWindowController::createViews(const std::string& title) {
  View& content = *window_->contentView();
  backgroundView_ = std::make_shared<BackgroundView>(content.bounds(), *this);
  backgroundView_->setCornerRadius(cornerRadius);
  backgroundView_->setBackgroundColor(quillbox->settings().tabRowColor());
  content.addSubview(backgroundView_);

  titleView_ = std::make_shared<LabelView>(quillbox->platform().graphics());
  titleView_->setRenderBackground(false);
  titleView_->setShadowed(true);
  titleView_->setText(title);
  const double titleWidth = titleView_->textWidth() + titlePadding;
  titleView_->setFrame(
      Rect::make(content.bounds().width() / 2 - titleWidth / 2, titleY, titleWidth, titleHeight));
  selectionHalo_.addToView(*backgroundView_);
  backgroundView_->addSubview(titleView_);

  Rect frame{{firstItemX, content.bounds().height() / 2 - itemSize_.height / 2}, itemSize_};
  std::int64_t index = 0;
  for (const auto& item : items_) {
    item->setIndex(index++);
    item->setViewFrame(frame, false);
    backgroundView_->addSubview(item->view());
    frame.origin.x += itemSize_.width;
  }
}

void ItemChooserWindowController::runModal() {
  const UserInteractionBracket interaction(*quillbox);
  window_->center(primaryScreen(quillbox->platform().displays()).visibleFrame);
  window_->makeKeyAndOrderFront();
  window_->makeFirstResponder(backgroundView_.get());
  window_->setBackgroundBlurRadius(quillbox->settings().backdropBlurPercent());
  lastMouseLocation_ = pointerLocation();
  applicationBehind_ = applicationBehind();
  session_ = std::make_unique<ModalSession>();
  watchTimer_ = RunLoop::main().scheduleTimer(
      watchInterval, true, [this](RunLoopTimer&) { watch(); }, RunLoopMode::ModalPanel);
  session_->run();
  // Ended from outside, nobody has chosen.
  if (window_->isVisible()) cancel();
  session_.reset();
}

void ItemChooserWindowController::watch() {
  const Processes& processes = quillbox->platform().processes();
  // While our window has the keys this process is in front, whoever comes forward behind it.
  if (processes.getFrontProcess() != processes.getCurrentProcess() ||
      applicationBehind() != applicationBehind_) {
    cancel();
    return;
  }
  const Point location = pointerLocation();
  // A resting pointer leaves the selection to the keys.
  if (location == lastMouseLocation_) return;
  lastMouseLocation_ = location;
  mouseMoved(location);
}

ProcessSerialNumber ItemChooserWindowController::applicationBehind() {
  const auto application = quillbox->platform().workspace().menuBarOwningApplication();
  return application ? application->processNumber() : ProcessSerialNumber();
}

Point ItemChooserWindowController::pointerLocation() const {
  const Point onScreen = quillbox->platform().pointer().mouseLocation();
  const Rect& frame = window_->frame();
  return backgroundView_->convertPointFromView({onScreen.x - frame.x(), onScreen.y - frame.y()},
                                               nullptr);
}

void ItemChooserWindowController::keyDown(const Event& event) {
  switch (event.keyCode) {
    case KeyCodeReturn:
    case KeyCodeEnter:
      chooseSelectedItem();
      break;
    case KeyCodeEscape:
      cancel();
      break;
    case KeyCodeLeft:
      selectPreviousItem();
      break;
    case KeyCodeRight:
      selectNextItem();
      break;
    case KeyCodeTab:
      if ((event.flags & EventFlagShift) != 0) {
        selectPreviousItem();
      } else {
        selectNextItem();
      }
      break;
    default:
      break;
  }
}

void ItemChooserWindowController::mouseMoved(Point location) {
  std::shared_ptr<Item> hit;
  for (const auto& item : items_) {
    Rect cell = offset(item->view()->frame(), cellShift, 0);
    cell.size.width += cellExcess;
    if (contains(cell, location)) hit = item;
  }
  setSelectedItem(hit, SelectionMethodPointer);
}

void ItemChooserWindowController::mouseDown() {
  if (selectedItem_) chooseSelectedItem();
}

void ItemChooserWindowController::setSelectedItem(const std::shared_ptr<Item>& item,
                                                  std::int32_t /*method*/) {
  selectedItem_ = item;
  if (!item) {
    selectionHalo_.hide();
    return;
  }
  selectionHalo_.showAtItem(*item, {itemSize_.width + haloExcess, itemSize_.height + haloExcess},
                            backgroundView_->frame().size);
}

void ItemChooserWindowController::selectNextItem() { selectItemAtDistance(1); }

void ItemChooserWindowController::selectPreviousItem() { selectItemAtDistance(-1); }

void ItemChooserWindowController::selectItemAtDistance(std::int64_t distance) {
  const auto count = static_cast<std::int64_t>(items_.size());
  // Without a selection the walk begins just outside of the end it comes from.
  const std::int64_t from = selectedItem_ ? selectedItem_->index() : distance > 0 ? -1 : count;
  const std::int64_t index = (from + distance + count) % count;
  setSelectedItem(items_[static_cast<std::size_t>(index)], SelectionMethodKeyboard);
}

void ItemChooserWindowController::chooseSelectedItem() {
  // Held: who hears of it may close the window.
  complete(std::shared_ptr<Item>(selectedItem_));
}

void ItemChooserWindowController::cancel() { complete(nullptr); }

void ItemChooserWindowController::complete(const std::shared_ptr<Item>& choice) {
  dismiss();
  // Once, whatever else still comes.
  if (const Completion completion = std::exchange(completionBlock_, nullptr)) completion(choice);
}

void ItemChooserWindowController::dismiss() {
  if (session_) session_->stop();
  if (watchTimer_) watchTimer_->invalidate();
  window_->orderOut();
}

}  // namespace qb
