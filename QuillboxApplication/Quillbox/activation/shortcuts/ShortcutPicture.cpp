#include "Quillbox/activation/shortcuts/ShortcutPicture.h"

#include <algorithm>

#include "Platform/Graphics.h"
#include "QuillboxCommon/views/Canvas.h"

namespace qb {

namespace {

const Font font = Font::systemFontOfSize(12);
constexpr double capHeight = 20, capRadius = 4, capGap = 4;
/// Beside the text, on each side.
constexpr double capPadding = 6;
constexpr double edgeWidth = 1;
const Color capColor = Color::white();
const Color edgeColor = Color::colorWithCalibratedRed(0.55, 0.57, 0.6, 1);
const Color textColor = Color::colorWithCalibratedRed(0.13, 0.14, 0.16, 1);

void drawCap(Canvas& canvas, const Rect& frame, const std::string& text, double textHeight) {
  // The edge lies within the frame.
  const Path outline = Path::roundedRect(inset(frame, edgeWidth / 2, edgeWidth / 2), capRadius);
  canvas.fill(outline, capColor);
  canvas.stroke(outline, edgeColor, edgeWidth);
  Rect line = frame;
  line.origin.y += (frame.height() - textHeight) / 2;
  line.size.height = textHeight;
  canvas.drawText(text, line, font, textColor, TextAlignmentCenter);
}

}  // namespace

Image pictureOfKeys(const std::vector<std::string>& keyCaps, Size size, Graphics& graphics) {
  std::vector<Size> texts;
  double width = -capGap;
  for (const std::string& text : keyCaps) {
    texts.push_back(graphics.measureText(text, font));
    width += texts.back().width + 2 * capPadding + capGap;
  }
  const double scale = std::min(1.0, size.width / width);
  return graphics.imageWithSize(size, [=](Canvas& canvas) {
    canvas.save();
    canvas.translate((size.width - scale * width) / 2, (size.height - scale * capHeight) / 2);
    canvas.scale(scale, scale);
    double x = 0;
    for (std::size_t i = 0; i < keyCaps.size(); ++i) {
      const Rect frame = Rect::make(x, 0, texts[i].width + 2 * capPadding, capHeight);
      drawCap(canvas, frame, keyCaps[i], texts[i].height);
      x = frame.maxX() + capGap;
    }
    canvas.restore();
  });
}

}  // namespace qb
