#pragma once

#include <QWidget>
#include <functional>
#include <optional>

class QToolButton;

namespace qb {

/// A window for a dialog, past the window manager so that it can stand above the panel: with a
/// title bar of its own, by which it can be moved, and a close box. Main thread.
class DialogWindow : public QWidget {
 public:
  struct Actions {
    /// Return, where no control has taken it.
    std::function<void()> confirm;
    /// Escape and the close box.
    std::function<void()> cancel;
  };

  /// With `translucent`, it has round corners; that needs a compositing manager.
  DialogWindow(const QString& title, bool translucent, Actions actions);

  /// Fills it below the title bar. Owned from now on.
  void setContent(QWidget* content);
  /// Shows it in the middle of its screen, somewhat above half the height.
  void present();
  /// Called when the user presses anywhere in it: it wants the keyboard back then.
  void setPressObserver(std::function<void()> observer) { pressObserver_ = std::move(observer); }
  /// Called when the keyboard focus has gone elsewhere, not just the keys for a while by a grab.
  void setLeaveObserver(std::function<void()> observer) { leaveObserver_ = std::move(observer); }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool nativeEvent(const QByteArray& eventType, void* message, qintptr* result) override;
  void paintEvent(QPaintEvent* event) override;
  /// The program ends.
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void applyColors();

  QString title_;
  bool translucent_;
  Actions actions_;
  std::function<void()> pressObserver_, leaveObserver_;
  QToolButton* closeBox_;
  /// From the window's corner to the pointer while it is being moved.
  std::optional<QPoint> grip_;
};

}  // namespace qb
