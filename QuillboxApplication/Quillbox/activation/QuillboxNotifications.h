#pragma once

#include <memory>
#include <string>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

class Quillbox;
class Window;

/// Short messages: in the style of the panel, floating over everything, or in the desktop's own.
/// Main thread.
class QuillboxNotifications {
 public:
  /// From here on notifications are shown even while this process is the front one.
  explicit QuillboxNotifications(Quillbox& facade);
  ~QuillboxNotifications();
  QuillboxNotifications(const QuillboxNotifications&) = delete;
  QuillboxNotifications& operator=(const QuillboxNotifications&) = delete;

  /// Shows `text` `delay` seconds from now for `duration` seconds and lets it fade. The window
  /// lives until it is gone from the screen.
  std::shared_ptr<Window> display(const std::string& text, TimeInterval duration,
                                  TimeInterval delay);
  /// The window alone, as wide as its text, not yet shown.
  std::shared_ptr<Window> create(const std::string& text) const;
  void displaySystemNotification(const std::string& title, const std::string& details);

 private:
  Quillbox& facade_;
};

}  // namespace qb
