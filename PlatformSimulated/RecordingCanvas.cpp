#include "PlatformSimulated/RecordingCanvas.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qb {

RecordingCanvas::RecordingCanvas(const Rect& dirty, double alpha) : state_{{}, dirty, alpha} {}

void RecordingCanvas::save() { saved_.push_back(state_); }

void RecordingCanvas::restore() {
  if (saved_.empty()) return;
  state_ = saved_.back();
  saved_.pop_back();
}

void RecordingCanvas::translate(double dx, double dy) {
  state_.origin.x += dx;
  state_.origin.y += dy;
}

void RecordingCanvas::clip(const Rect& rect) {
  state_.clip = intersection(state_.clip, absolute(rect));
}

void RecordingCanvas::multiplyAlpha(double alpha) { state_.alpha *= alpha; }

bool RecordingCanvas::needsDrawing(const Rect& rect) const {
  return intersects(state_.clip, absolute(rect));
}

void RecordingCanvas::fill(const Rect& rect, const Color& color) {
  if (!needsDrawing(rect)) return;
  DrawOperation operation;
  operation.kind = DrawOperation::Kind::FillRect;
  operation.rect = absolute(rect);
  operation.color = color;
  record(std::move(operation));
}

void RecordingCanvas::fill(const Path& path, const Color& color) {
  if (state_.clip.isEmpty()) return;
  DrawOperation operation;
  operation.kind = DrawOperation::Kind::FillPath;
  operation.path = absolute(path);
  operation.color = color;
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

Path RecordingCanvas::absolute(const Path& path) const {
  Path moved;
  for (const Path::Element& element : path.elements()) {
    const Point point{element.point.x + state_.origin.x, element.point.y + state_.origin.y};
    switch (element.kind) {
      case Path::Element::Kind::Move:
        moved.moveTo(point);
        break;
      case Path::Element::Kind::Line:
        moved.lineTo(point);
        break;
      case Path::Element::Kind::Arc:
        moved.arc(point, element.radius, element.startAngle, element.sweepAngle);
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
  operations_.push_back(std::move(operation));
}

}  // namespace qb
