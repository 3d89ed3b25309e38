#include "Quillbox/rows/TabRowFitNotice.h"

#include <cstdint>

#include "Platform/Workspace.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

constexpr const char* settingsIdentifier = "com.apple.systempreferences";
constexpr TimeInterval timeBetweenLooks = 0.5;
constexpr const char* message =
    "The current \"Smaller\" icon size is too large to fit your\rcurrent Tab Rows on screen. If "
    "you keep this size you\rwill need to close one or more Tab Rows to fit them.";

}  // namespace

TabRowFitNotice::~TabRowFitNotice() {
  if (window_) window_->orderOut();
}

bool TabRowFitNotice::applies() const {
  const auto rows = static_cast<std::int64_t>(host_.tabRows().size());
  if (rows <= host_.calculateMaximumTabRowsSupportedByMainScreen()) return false;
  const auto front = quillbox->platform().workspace().menuBarOwningApplication();
  return front && front->bundleIdentifier() == settingsIdentifier;
}

void TabRowFitNotice::manage() {
  const bool due = applies();
  if (due && !window_) {
    window_ = quillbox->createQuillboxNotification(message);
    window_->orderFront();
  } else if (!due && window_) {
    window_->orderOut();
    window_.reset();
  }
  if (window_) manageAgainLater();
}

void TabRowFitNotice::manageAgainLater() {
  // One look is under way at a time, however often the settings change.
  if (willManageAgain_) return;
  willManageAgain_ = true;
  executeBlockAfterDelay(
      [this, weakHost = std::weak_ptr<HostView>(sharedFrom(host_))] {
        const auto host = weakHost.lock();
        if (!host) return;
        willManageAgain_ = false;
        manage();
      },
      timeBetweenLooks);
}

}  // namespace qb
