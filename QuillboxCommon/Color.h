#pragma once

namespace qb {

/// A colour by calibrated components, each 0 to 1.
///
/// A gray colour has two components, white and alpha; its red, green and blue all read as the
/// white.
class Color {
 public:
  constexpr Color() = default;
  static constexpr Color colorWithCalibratedRed(double red, double green, double blue,
                                                double alpha) {
    return Color(red, green, blue, alpha, 4);
  }
  static constexpr Color colorWithCalibratedWhite(double white, double alpha) {
    return Color(white, white, white, alpha, 2);
  }
  static constexpr Color black() { return colorWithCalibratedWhite(0, 1); }
  static constexpr Color white() { return colorWithCalibratedWhite(1, 1); }
  static constexpr Color gray() { return colorWithCalibratedWhite(0.5, 1); }
  static constexpr Color clear() { return colorWithCalibratedWhite(0, 0); }

  constexpr double red() const { return red_; }
  constexpr double green() const { return green_; }
  constexpr double blue() const { return blue_; }
  constexpr double alpha() const { return alpha_; }
  constexpr double whiteComponent() const { return red_; }
  constexpr int numberOfComponents() const { return components_; }
  constexpr Color withAlpha(double alpha) const {
    return Color(red_, green_, blue_, alpha, components_);
  }

  friend bool operator==(const Color&, const Color&) = default;

 private:
  constexpr Color(double red, double green, double blue, double alpha, int components)
      : red_(red), green_(green), blue_(blue), alpha_(alpha), components_(components) {}

  double red_ = 0, green_ = 0, blue_ = 0, alpha_ = 1;
  int components_ = 2;
};

}  // namespace qb
