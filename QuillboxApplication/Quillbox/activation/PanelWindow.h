#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Processes.h"
#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/Geometry.h"

namespace qb {

class AppDelegate;
class HostView;
class View;
class Window;

/// The one full-screen, translucent window that holds the panel. It is made at launch and ordered
/// out while it is not in use.
class PanelWindow {
 public:
  explicit PanelWindow(AppDelegate& appDelegate);
  ~PanelWindow();
  PanelWindow(const PanelWindow&) = delete;
  PanelWindow& operator=(const PanelWindow&) = delete;

  void setupWindow();
  /// Where the rows may stand: the content within its margins, narrowed as the settings say, in
  /// the content view's coordinates.
  Rect hostViewMaximumFrame() const;
  /// The frame of the screen at the origin as it is now; the zero rectangle without one.
  Rect primaryScreenFrame() const;
  /// The same as it was when it was last noted: at launch, at each change of the displays and at
  /// each presentation.
  const Rect& notedPrimaryScreenFrame() const { return primaryScreenFrame_; }
  void notePrimaryScreenFrame() { primaryScreenFrame_ = primaryScreenFrame(); }
  /// Covers the primary screen, but for the column of a Dock at its side.
  void adjustWindowSizeForEnvironment();
  void adjustWindowSizeToFrame(const Rect& frame);

  /// Puts the window up. Its content shows at once, or 0.3 second later when keys brought it up:
  /// whoever is done with the keys by then is spared the sight of it.
  void presentWindowWithApplicationActivationMethod(std::int32_t method);
  void dismissWindowWithInvocation(bool invocation, bool reactivatePreviousApp);
  void setContentViewAlphaValueToOne();
  void setWindowBackgroundColor(const Color& color);
  bool contentViewIsVisible() const;
  void reactivatePreviousApp();

  /// Down to where alerts can cover it, and back.
  void setInteractiveLevel();
  void setLevelForActivationMethod();

  Window& window() const { return *window_; }
  HostView* hostView() const { return hostView_.get(); }

 private:
  std::int64_t levelAtPresentation() const;

  AppDelegate& appDelegate_;
  std::int64_t interactiveWindowLevel_;
  std::int64_t defaultWindowLevel_;
  Rect primaryScreenFrame_;
  bool windowIsBeingPresented_ = false;
  ProcessSerialNumber previousFrontProcess_;
  std::unique_ptr<Window> window_;
  std::shared_ptr<View> contentView_;
  std::shared_ptr<HostView> hostView_;
};

}  // namespace qb
