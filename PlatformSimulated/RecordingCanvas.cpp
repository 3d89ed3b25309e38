#include "PlatformSimulated/RecordingCanvas.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace qb {

RecordingCanvas::RecordingCanvas(const Rect& dirty, double alpha)
    : state_{{}, dirty, alpha, {1, 1}, {}} {}

void RecordingCanvas::save() { saved_.push_back(state_); }

void RecordingCanvas::restore() {
  if (saved_.empty()) return;
  state_ = saved_.back();
  saved_.pop_back();
}

void RecordingCanvas::translate(double dx, double dy) { state_.origin = absolute(Point{dx, dy}); }

void RecordingCanvas::scale(double sx, double sy) {
  state_.scale.width *= sx;
  state_.scale.height *= sy;
}

void RecordingCanvas::clip(const Rect& rect) {
  state_.clip = intersection(state_.clip, absolute(rect));
}

void RecordingCanvas::multiplyAlpha(double alpha) { state_.alpha *= alpha; }

void RecordingCanvas::setShadow(const Shadow& shadow) { state_.shadow = shadow; }

bool RecordingCanvas::needsDrawing(const Rect& rect) const {
  return intersects(state_.clip, absolute(rect));
}

void RecordingCanvas::fill(const Rect& rect, const Color& color) {
  fillUsingOperation(rect, color, CompositingOperation::SourceOver);
}

void RecordingCanvas::fillUsingOperation(const Rect& rect, const Color& color,
                                         CompositingOperation compositing) {
  if (!needsDrawing(rect)) return;
  DrawOperation operation;
  operation.kind = DrawOperation::Kind::FillRect;
  operation.rect = absolute(rect);
  operation.color = color;
  operation.operation = compositing;
  record(std::move(operation));
}

void RecordingCanvas::fill(const Path& path, const Color& color) {
  if (state_.clip.isEmpty()) return;
  DrawOperation operation;
  operation.kind = DrawOperation::Kind::FillPath;
  operation.path = absolute(path);
  operation.color = color;
  operation.shadow = state_.shadow;
  record(std::move(operation));
}

void RecordingCanvas::stroke(const Path& path, const Color& color, double lineWidth) {
  if (state_.clip.isEmpty()) return;
  DrawOperation operation;
  operation.kind = DrawOperation::Kind::StrokePath;
  operation.path = absolute(path);
  operation.color = color;
  operation.lineWidth = lineWidth;
  record(std::move(operation));
}

void RecordingCanvas::drawImage(const Image& image, const Rect& rect,
                                CompositingOperation compositing, double fraction) {
  if (!needsDrawing(rect)) return;
  DrawOperation operation;
  operation.kind = DrawOperation::Kind::Image;
  operation.rect = absolute(rect);
  operation.image = image;
  operation.operation = compositing;
  operation.fraction = fraction;
  operation.shadow = state_.shadow;
  record(std::move(operation));
}

void RecordingCanvas::drawText(std::string_view text, const Rect& rect, const Font& font,
                               const Color& color, TextAlignment alignment) {
  // Text may stick out of its rectangle, so a rectangle outside the clip does not hide it.
  if (state_.clip.isEmpty()) return;
  DrawOperation operation;
  operation.kind = DrawOperation::Kind::Text;
  operation.rect = absolute(rect);
  operation.text = text;
  operation.font = font;
  operation.color = color;
  operation.alignment = alignment;
  record(std::move(operation));
}

std::vector<DrawOperation> RecordingCanvas::operations(DrawOperation::Kind kind) const {
  std::vector<DrawOperation> matching;
  std::copy_if(operations_.begin(), operations_.end(), std::back_inserter(matching),
               [kind](const DrawOperation& operation) { return operation.kind == kind; });
  return matching;
}

std::vector<std::string> RecordingCanvas::texts() const {
  std::vector<std::string> all;
  for (const DrawOperation& operation : operations(DrawOperation::Kind::Text)) {
    all.push_back(operation.text);
  }
  return all;
}

Point RecordingCanvas::absolute(Point point) const {
  return {state_.origin.x + point.x * state_.scale.width,
          state_.origin.y + point.y * state_.scale.height};
}

Rect RecordingCanvas::absolute(const Rect& rect) const {
  const auto [sx, sy] = state_.scale;
  const Point corner =
      absolute(Point{sx < 0 ? rect.maxX() : rect.x(), sy < 0 ? rect.maxY() : rect.y()});
  return {corner, {rect.width() * std::abs(sx), rect.height() * std::abs(sy)}};
}

Path RecordingCanvas::absolute(const Path& path) const {
  const bool flippedX = state_.scale.width < 0, flippedY = state_.scale.height < 0;
  Path moved;
  for (const Path::Element& element : path.elements()) {
    const Point point = absolute(element.point);
    switch (element.kind) {
      case Path::Element::Kind::Move:
        moved.moveTo(point);
        break;
      case Path::Element::Kind::Line:
        moved.lineTo(point);
        break;
      case Path::Element::Kind::Arc:
        moved.arc(point, element.radius * std::abs(state_.scale.width),
                  (flippedX ? 180 : 0) +
                      (flippedX != flippedY ? -element.startAngle : element.startAngle),
                  flippedX != flippedY ? -element.sweepAngle : element.sweepAngle);
        break;
      case Path::Element::Kind::Close:
        moved.close();
        break;
    }
  }
  return moved;
}

void RecordingCanvas::record(DrawOperation operation) {
  operation.alpha = state_.alpha;
  operation.flippedHorizontally = state_.scale.width < 0;
  operation.flippedVertically = state_.scale.height < 0;
  operations_.push_back(std::move(operation));
}

}  // namespace qb
