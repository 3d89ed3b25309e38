#pragma once

#include <string_view>
#include <vector>

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

/// Lines and arcs of one outline.
class Path {
 public:
  struct Element {
    enum class Kind { Move, Line, Arc, Close } kind;
    /// The point of a move or line, the centre of an arc.
    Point point;
    /// An arc goes from `startAngle` through `sweepAngle`, in degrees, clockwise on the screen
    /// from the direction of x. It is joined to what came before by a line.
    double radius = 0, startAngle = 0, sweepAngle = 0;
    friend bool operator==(const Element&, const Element&) = default;
  };

  void moveTo(Point point) { elements_.push_back({Element::Kind::Move, point}); }
  void lineTo(Point point) { elements_.push_back({Element::Kind::Line, point}); }
  void arc(Point center, double radius, double startAngle, double sweepAngle) {
    elements_.push_back({Element::Kind::Arc, center, radius, startAngle, sweepAngle});
  }
  void close() { elements_.push_back({Element::Kind::Close, {}}); }
  const std::vector<Element>& elements() const { return elements_; }

  /// An arc for each corner, beginning with the top left one and going clockwise. A radius over
  /// half of the shorter side counts as that half. An empty rectangle gives an empty path.
  static Path roundedRect(const Rect& rect, double radius);
  friend bool operator==(const Path&, const Path&) = default;

 private:
  std::vector<Element> elements_;
};

/// How what is drawn meets what is there already: on top of it, in place of it, on top of it but
/// only where it is opaque, as a hole in it, or beneath it.
enum class CompositingOperation { SourceOver, Copy, SourceAtop, DestinationOut, DestinationOver };

/// What drawn things cast on what lies beneath them.
struct Shadow {
  /// None is cast in a clear colour.
  Color color = Color::clear();
  /// In points on the canvas, whatever has been scaled or flipped.
  Point offset;
  /// How far in points its edge fades; 0 is a hard edge.
  double blurRadius = 0;
  friend bool operator==(const Shadow&, const Shadow&) = default;
};

/// What views draw on. Points, origin at the top left, y grows downward, in whatever coordinates
/// the last `translate` and `scale` set up. Valid only during the `draw` it was given to.
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void save() = 0;
  virtual void restore() = 0;
  virtual void translate(double dx, double dy) = 0;
  /// Stretches the coordinates; a negative factor flips them. Neither is 0.
  virtual void scale(double sx, double sy) = 0;
  virtual void clip(const Rect& rect) = 0;
  /// Multiplies the opacity of all that follows, until `restore`.
  virtual void multiplyAlpha(double alpha) = 0;
  /// The shadow of each image and each filled path that follows, until `restore`.
  virtual void setShadow(const Shadow& shadow) = 0;
  /// False when nothing drawn in `rect` could be seen, so drawing it can be spared.
  virtual bool needsDrawing(const Rect& rect) const = 0;

  virtual void fill(const Rect& rect, const Color& color) = 0;
  virtual void fillUsingOperation(const Rect& rect, const Color& color,
                                  CompositingOperation operation) = 0;
  virtual void fill(const Path& path, const Color& color) = 0;
  virtual void stroke(const Path& path, const Color& color, double lineWidth) = 0;
  /// Scales the image into `rect`.
  virtual void drawImage(const Image& image, const Rect& rect,
                         CompositingOperation operation = CompositingOperation::SourceOver,
                         double fraction = 1) = 0;
  /// Draws from the top of `rect`, one line for each line of the text; what is wider is not
  /// clipped and, when centred, sticks out on both sides.
  virtual void drawText(std::string_view text, const Rect& rect, const Font& font,
                        const Color& color, TextAlignment alignment) = 0;
};

}  // namespace qb
