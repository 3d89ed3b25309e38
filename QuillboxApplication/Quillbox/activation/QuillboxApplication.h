#pragma once

#include "QuillboxCommon/views/Event.h"

namespace qb {

class AppDelegate;

/// Looks at every event of this process's windows before their views do.
class QuillboxApplication {
 public:
  explicit QuillboxApplication(AppDelegate& appDelegate);
  ~QuillboxApplication();
  QuillboxApplication(const QuillboxApplication&) = delete;
  QuillboxApplication& operator=(const QuillboxApplication&) = delete;

  /// Whether the window's views get the event too.
  bool sendEvent(const Event& event);

 private:
  AppDelegate& appDelegate_;
};

}  // namespace qb
