#pragma once

#include <QWidget>

#include "Platform/Dialogs.h"

namespace qb {

/// A key recorder as a control: a field with the keys that are recorded, or those that are held,
/// a box that clears them, and the hint below. A press makes it listen; what it hears comes past
/// Qt. Main thread.
class KeyRecorderView : public QWidget {
 public:
  /// `recorder` must outlive it.
  explicit KeyRecorderView(DialogKeyRecorder& recorder);

  /// The recorder looks otherwise now.
  void refresh();
  /// Where a press clears; empty when there is nothing to clear.
  QRect clearBox() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRectF field() const;
  void paintField(QPainter& painter, const DialogKeyRecorder::Look& look) const;
  void paintKeyCaps(QPainter& painter, const DialogKeyRecorder::Look& look) const;
  void paintClearBox(QPainter& painter) const;
  void paintHint(QPainter& painter, const DialogKeyRecorder::Look& look) const;

  DialogKeyRecorder& recorder_;
};

}  // namespace qb
