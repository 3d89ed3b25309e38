#pragma once

#include <string>
#include <vector>

#include "QuillboxCommon/views/Canvas.h"

namespace qb {

/// One thing drawn: positions from the top left of the window, whatever was translated, and the
/// opacity that all `multiplyAlpha` around it come to. Only the fields of its kind are set. Line
/// widths and fonts stay what they were, however much was scaled.
struct DrawOperation {
  enum class Kind { FillRect, FillPath, StrokePath, Image, Text };
  Kind kind = Kind::FillRect;
  Rect rect;
  Path path;
  Color color;
  double lineWidth = 0;
  Image image;
  CompositingOperation operation = CompositingOperation::SourceOver;
  double fraction = 1;
  std::string text;
  Font font;
  TextAlignment alignment = TextAlignmentLeft;
  double alpha = 1;
  /// Of images and filled paths.
  Shadow shadow;
  /// It was drawn while an odd number of flips along that axis was in force.
  bool flippedHorizontally = false, flippedVertically = false;
  friend bool operator==(const DrawOperation&, const DrawOperation&) = default;
};

/// A canvas that writes down what is drawn on it. Drawing that lies outside the clip as a whole is
/// left out, as it would not be seen.
class RecordingCanvas : public Canvas {
 public:
  /// `dirty` is the first clip; `alpha` the opacity to begin with.
  explicit RecordingCanvas(const Rect& dirty, double alpha = 1);

  void save() override;
  void restore() override;
  void translate(double dx, double dy) override;
  void scale(double sx, double sy) override;
  void clip(const Rect& rect) override;
  void multiplyAlpha(double alpha) override;
  void setShadow(const Shadow& shadow) override;
  bool needsDrawing(const Rect& rect) const override;
  void fill(const Rect& rect, const Color& color) override;
  void fillUsingOperation(const Rect& rect, const Color& color,
                          CompositingOperation operation) override;
  void fill(const Path& path, const Color& color) override;
  void stroke(const Path& path, const Color& color, double lineWidth) override;
  void drawImage(const Image& image, const Rect& rect, CompositingOperation operation,
                 double fraction) override;
  void drawText(std::string_view text, const Rect& rect, const Font& font, const Color& color,
                TextAlignment alignment) override;

  const std::vector<DrawOperation>& operations() const { return operations_; }
  /// The operations of one kind.
  std::vector<DrawOperation> operations(DrawOperation::Kind kind) const;
  /// All texts in drawing order.
  std::vector<std::string> texts() const;
  /// Each `save` has had its `restore`.
  bool isBalanced() const { return saved_.empty(); }

 private:
  struct State {
    Point origin;
    Rect clip;
    double alpha = 1;
    Size scale{1, 1};
    Shadow shadow;
  };
  Point absolute(Point point) const;
  Rect absolute(const Rect& rect) const;
  Path absolute(const Path& path) const;
  void record(DrawOperation operation);

  State state_;
  std::vector<State> saved_;
  std::vector<DrawOperation> operations_;
};

}  // namespace qb
