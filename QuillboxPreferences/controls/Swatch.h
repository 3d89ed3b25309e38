#pragma once

#include <QAbstractButton>
#include <QColor>
#include <functional>
#include <vector>

#include "QuillboxCommon/Color.h"

namespace qb {

QColor toQColor(const Color& color);

/// A round sample of a colour, over a checkered ground where it is translucent.
class Swatch : public QAbstractButton {
 public:
  explicit Swatch(QColor color, QWidget* parent = nullptr);
  void setColor(QColor color);
  QSize sizeHint() const override { return {34, 34}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor color_;
};

/// The colours on offer, two rows of ten; the one that is in use is marked.
class SwatchGrid : public QWidget {
 public:
  /// `chosen` gets the colour that was clicked.
  explicit SwatchGrid(const std::function<void(const Color&)>& chosen);
  /// Marks the colour that is equal, or none.
  void show(const Color& color);

 private:
  struct Offer {
    Color color;
    Swatch* swatch;
  };
  std::vector<Offer> offers_;
};

}  // namespace qb
