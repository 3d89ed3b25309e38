#include "Quillbox/activation/PanelWindow.h"

#include <cmath>
#include <string_view>

#include "Platform/Pointer.h"
#include "Platform/WindowServer.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Environment.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/DockManager.h"
#include "Quillbox/managers/PrimaryScreen.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

constexpr std::uint64_t stationary = 16;
/// It is at home on no space, and comes to the present one.
constexpr std::uint64_t movesToActiveSpace = 2;

constexpr double sideMargin = 20;
constexpr double bottomMargin = 20;
constexpr double topMargin = 40;

constexpr TimeInterval fadeInDelay = 0.3;
constexpr TimeInterval reactivationDelay = 0.25;
constexpr std::string_view fadeInSelector = "setContentViewAlphaValueToOne";
constexpr std::string_view reactivationSelector = "reactivatePreviousApp";

bool isRaisedByKeys(std::int32_t method) {
  return method == ActivationMethodCommandTab || method == ActivationMethodOptionTab;
}

}  // namespace

PanelWindow::PanelWindow(AppDelegate& appDelegate)
    : appDelegate_(appDelegate),
      interactiveWindowLevel_(
          appDelegate.platform().windowServer().windowLevelForKey(WindowLevelKeyFloating)),
      defaultWindowLevel_(
          appDelegate.platform().windowServer().windowLevelForKey(WindowLevelKeyScreenSaver)),
      window_(std::make_unique<BorderlessWindow>(appDelegate.platform().windowServer(), Rect{})),
      contentView_(window_->contentView()) {}

PanelWindow::~PanelWindow() { RunLoop::main().cancelPreviousPerformRequests(this); }

void PanelWindow::setupWindow() {
  window_->setCollectionBehavior(stationary);
  window_->setHasShadow(false);
  window_->setOpaque(false);
  window_->setStyleMask(0);
  window_->setLevel(defaultWindowLevel_);
  window_->orderOut();
  window_->setCollectionBehavior(movesToActiveSpace);
  setWindowBackgroundColor(Color::clear());
  adjustWindowSizeForEnvironment();
  contentView_->setAlphaValue(0);
  hostView_ = HostView::create(hostViewMaximumFrame());
  contentView_->addSubview(hostView_);
}

Rect PanelWindow::hostViewMaximumFrame() const {
  Rect frame = contentView_->bounds();
  frame.origin.x += sideMargin;
  frame.origin.y += bottomMargin;
  frame.size.width -= 2 * sideMargin;
  frame.size.height -= bottomMargin + topMargin;
  const double percent = static_cast<double>(appDelegate_.settings().maxHostViewWidthPercent());
  const double excess = frame.width() - frame.width() * (percent / 100.0);
  if (excess > 0) {
    frame.size.width -= excess;
    frame.origin.x += std::trunc(excess / 2);
  }
  return frame;
}

Rect PanelWindow::primaryScreenFrame() const {
  return primaryScreen(appDelegate_.platform().displays()).frame;
}

void PanelWindow::adjustWindowSizeForEnvironment() {
  notePrimaryScreenFrame();
  const auto dock = quillbox->dockManager().dockFrameAndOrientation();
  const Rect& screen = primaryScreenFrame_;
  const double remainingWidth = screen.width() - dock.frame.width();
  switch (dock.orientation) {
    case DockOrientationLeft:
      adjustWindowSizeToFrame(Rect::make(dock.frame.width(), 0, remainingWidth, screen.height()));
      break;
    case DockOrientationRight:
      adjustWindowSizeToFrame(Rect::make(0, 0, remainingWidth, screen.height()));
      break;
    default:
      adjustWindowSizeToFrame(screen);
      break;
  }
}

void PanelWindow::adjustWindowSizeToFrame(const Rect& frame) {
  if (window_->frame() == frame) return;
  window_->setFrame(frame);
  if (hostView_) hostView_->setMaximumFrame(hostViewMaximumFrame());
}

void PanelWindow::presentWindowWithApplicationActivationMethod(std::int32_t method) {
  if (windowIsBeingPresented_) return;
  windowIsBeingPresented_ = true;
  // Our window is not up yet, so this is the one that the user was in.
  previousFrontProcess_ = appDelegate_.platform().processes().getFrontProcess();
  const PropertyList environment = environmentWithFrontProcess(previousFrontProcess_);
  adjustWindowSizeForEnvironment();
  window_->setLevel(levelAtPresentation());
  window_->makeKeyAndOrderFront();
  window_->makeFirstResponder(nullptr);
  RunLoop& loop = RunLoop::main();
  loop.cancelPreviousPerformRequests(this, reactivationSelector);
  hostView_->windowWillBeDisplayed(*window_, environment, method);
  if (isRaisedByKeys(method)) {
    loop.performAfterDelay(this, fadeInSelector, fadeInDelay,
                           [this] { setContentViewAlphaValueToOne(); });
  } else {
    setContentViewAlphaValueToOne();
  }
  hostView_->windowWasDisplayed(*window_);
}

void PanelWindow::dismissWindowWithInvocation(bool invocation, bool reactivatePreviousApp) {
  if (!windowIsBeingPresented_) return;
  windowIsBeingPresented_ = false;
  if (invocation) {
    // First, because hiding lets go of the selection.
    hostView_->handleAction(QuillboxAction::actionWithCode(QuillboxActionInvoke));
  }
  RunLoop& loop = RunLoop::main();
  loop.cancelPreviousPerformRequests(this, fadeInSelector);
  hostView_->windowWillBeDismissed(*window_);
  contentView_->setAlphaValue(0);
  window_->orderOut();
  setWindowBackgroundColor(Color::clear());
  hostView_->windowWasDismissed(*window_);
  if (reactivatePreviousApp) {
    loop.performAfterDelay(this, reactivationSelector, reactivationDelay,
                           [this] { this->reactivatePreviousApp(); });
  }
}

void PanelWindow::setContentViewAlphaValueToOne() {
  setWindowBackgroundColor(appDelegate_.settings().backdropColor());
  contentView_->setAlphaValue(1);
}

void PanelWindow::setWindowBackgroundColor(const Color& color) {
  window_->setBackgroundColor(color);
  window_->setBackgroundBlurRadius(appDelegate_.settings().backdropBlurPercent());
}

bool PanelWindow::contentViewIsVisible() const { return contentView_->alphaValue() > 0; }

void PanelWindow::reactivatePreviousApp() {
  appDelegate_.platform().processes().setFrontProcess(previousFrontProcess_);
}

void PanelWindow::setInteractiveLevel() { window_->setLevel(interactiveWindowLevel_); }

void PanelWindow::setLevelForActivationMethod() {
  window_->setLevel(appDelegate_.externalMouseDownsDismissApplication() ? defaultWindowLevel_
                                                                        : interactiveWindowLevel_);
}

std::int64_t PanelWindow::levelAtPresentation() const {
  const bool buttonIsDown = appDelegate_.platform().pointer().pressedMouseButtons() != 0;
  return appDelegate_.externalMouseDownsDismissApplication() && !buttonIsDown
             ? defaultWindowLevel_
             : interactiveWindowLevel_;
}

}  // namespace qb
