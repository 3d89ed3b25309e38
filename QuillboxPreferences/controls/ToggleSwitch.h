#pragma once

#include <QAbstractButton>

namespace qb {

/// A switch that is on or off.
class ToggleSwitch : public QAbstractButton {
 public:
  explicit ToggleSwitch(QWidget* parent = nullptr);
  QSize sizeHint() const override { return {42, 24}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qb
