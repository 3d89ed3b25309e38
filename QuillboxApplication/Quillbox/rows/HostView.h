#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Platform/EventTap.h"
#include "Quillbox/activation/QuillboxAction.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

class TabRow;
class TabRowProvider;
class Window;

/// The content of the panel: the stack of Tab Rows. It fits the rows to the screen, decides which
/// of them is active, and feeds them the pointer, which it polls. Flipped. Main thread.
class HostView : public View {
 public:
  /// Makes its rows in the next pass of the run loop, when the service objects exist.
  static std::shared_ptr<HostView> create(const Rect& maximumFrame);
  ~HostView() override;

  void setMaximumFrame(const Rect& frame);
  void windowWillBeDisplayed(Window& window, const PropertyList& environment,
                             std::int32_t applicationActivationMethod);
  void windowWasDisplayed(Window& window);
  void windowWillBeDismissed(Window& window);
  void windowWasDismissed(Window& window);
  void handleAction(const QuillboxAction& action);
  void keyDown(const Event& event) override;
  void scrollWheel(const Event& event) override;
  /// Whether a press at the tap falls on a row: on neither the empty panel nor nothing at all.
  bool mouseDownEventIsWithinTabRow(const TappedEvent& event);
  void mouseUpEventMonitored(const Event& event);
  void settingsChanged();

  /// Top row first.
  const std::vector<std::shared_ptr<TabRow>>& tabRows() const { return tabRows_; }
  TabRow* activeTabRow() const { return activeTabRow_.get(); }

  bool isFlipped() const override { return true; }
  bool acceptsFirstResponder() const override { return true; }
  void setFrame(const Rect& frame) override;

 private:
  explicit HostView(const Rect& maximumFrame);

  std::vector<std::shared_ptr<TabRow>> tabRows_;
  std::shared_ptr<TabRow> activeTabRow_;
};

}  // namespace qb
