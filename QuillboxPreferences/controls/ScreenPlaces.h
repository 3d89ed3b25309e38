#pragma once

#include <QWidget>
#include <array>
#include <functional>

namespace qb {

/// A picture of a screen whose corners and edges are switches.
class ScreenPlaces : public QWidget {
 public:
  enum Place { TopLeft, TopRight, BottomLeft, BottomRight, Left, Bottom, Right, numberOfPlaces };

  explicit ScreenPlaces(const std::function<void(Place, bool)>& changed);
  void show(Place place, bool on);
  QSize sizeHint() const override { return {420, 208}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  class Spot;
  QRectF screen() const;
  std::array<Spot*, numberOfPlaces> spots_{};
};

}  // namespace qb
