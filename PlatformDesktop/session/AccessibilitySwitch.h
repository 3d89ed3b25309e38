#pragma once

#include <QDBusVariant>
#include <QObject>
#include <functional>
#include <utility>

#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

/// The desktop's own switch for assistive technologies ("org.a11y.Status" on the session's bus),
/// followed live. Most desktops have it off until somebody turns a screen reader on, so off means
/// nothing by itself: who heeds it has to be told so by the user. Main thread.
class AccessibilitySwitch : public QObject {
  Q_OBJECT

 public:
  /// `bus` must outlive it.
  explicit AccessibilitySwitch(SessionBus& bus);

  /// False also while that is not known, and where the desktop has no such switch.
  bool isOff() const { return isOff_; }
  /// Called after each change of `isOff`.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

 private Q_SLOTS:
  void ask();

 private:
  void connectTo(QDBusConnection& connection);
  void setOff(bool off);

  SessionBus& bus_;
  bool isOff_ = false;
  std::function<void()> observer_;
};

}  // namespace qb
