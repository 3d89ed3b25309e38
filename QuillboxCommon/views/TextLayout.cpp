#include "QuillboxCommon/views/TextLayout.h"

#include <algorithm>

#include "QuillboxCommon/Utf8.h"

namespace qb {

namespace {

constexpr double margin = 5;
/// Of the height of a line, as fonts of the system family have it.
constexpr double partAboveGround = 0.8;
constexpr std::string_view lineEnds = "\r\n";
/// In bytes. Longer ones begin a line and are only measured as far as that goes.
constexpr std::size_t longestPlainWord = 200;

/// Tabs as blanks, and none of the signs that show nothing.
std::string visibleText(std::string_view text) {
  std::string visible;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\t') {
      visible += "    ";
    } else if (byte >= ' ' || c == '\r' || c == '\n') {
      visible += c;
    }
  }
  return visible;
}

/// Up to and with the blanks after a word.
std::string_view firstWord(std::string_view text) {
  const std::size_t end = text.find(' ');
  return text.substr(0, end == std::string_view::npos ? end : text.find_first_not_of(' ', end));
}

std::string_view withoutBlanksBehind(std::string_view word) {
  const std::size_t last = word.find_last_not_of(' ');
  return word.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// The longest beginning of so few points; a character at least. Looks no further than it has to.
std::string_view fittingBeginning(std::string_view text, double width, const Font& font,
                                  const TextMeasurer& measurer) {
  const auto fits = [&](std::size_t count) {
    return measurer.measureText(firstCharacters(text, count), font).width <= width;
  };
  std::size_t fitting = 1, beyond = 2;
  while (firstCharacters(text, fitting).size() < text.size() && fits(beyond)) {
    fitting = beyond;
    beyond *= 2;
  }
  while (beyond - fitting > 1) {
    const std::size_t middle = fitting + (beyond - fitting) / 2;
    (fits(middle) ? fitting : beyond) = middle;
  }
  return firstCharacters(text, fitting);
}

}  // namespace

TextLayout::TextLayout(const AttributedString& text, double width, const TextMeasurer& measurer)
    : width_(std::max(1.0, width - 2 * margin)), x_(0) {
  for (const AttributedString::Run& run : text.runs()) add(run, measurer);
}

void TextLayout::add(const AttributedString::Run& run, const TextMeasurer& measurer) {
  const double emptyHeight = measurer.measureText("", run.font).height;
  const std::string visible = visibleText(run.text);
  for (std::string_view rest = visible; !rest.empty();) {
    const std::size_t length = std::min(rest.find_first_of(lineEnds), rest.size());
    for (std::string_view line = rest.substr(0, length); !line.empty();) {
      const std::string_view word = firstWord(line);
      line.remove_prefix(word.size());
      addWord(word, run, measurer);
      followsReturn_ = false;
    }
    rest.remove_prefix(length);
    if (rest.empty()) break;
    const bool isSecondOfTwo = followsReturn_ && rest.front() == '\n';
    followsReturn_ = rest.front() == '\r';
    rest.remove_prefix(1);
    if (!isSecondOfTwo) endLine(emptyHeight);
  }
}

void TextLayout::addWord(std::string_view word, const AttributedString::Run& run,
                         const TextMeasurer& measurer) {
  while (!word.empty()) {
    const bool isPlain = word.size() <= longestPlainWord;
    const Size size = isPlain ? measurer.measureText(word, run.font) : Size();
    // Blanks behind a word may stick out.
    if (isPlain && x_ + measurer.measureText(withoutBlanksBehind(word), run.font).width <= width_) {
      addPiece(word, run, size);
      return;
    }
    if (x_ > 0) {
      endLine(size.height);
      continue;
    }
    const std::string_view part = fittingBeginning(word, width_, run.font, measurer);
    addPiece(part, run, measurer.measureText(part, run.font));
    word.remove_prefix(part.size());
  }
}

void TextLayout::addPiece(std::string_view text, const AttributedString::Run& run, Size size) {
  Line& line = lines_.back();
  line.height = std::max(line.height, size.height);
  Piece* const last = line.pieces.empty() ? nullptr : &line.pieces.back();
  if (last != nullptr && last->font == run.font && last->color == run.color) {
    last->text += text;
    last->size.width += size.width;
  } else {
    line.pieces.push_back({std::string(text), x_, size, run.font, run.color});
  }
  x_ += size.width;
}

void TextLayout::endLine(double emptyHeight) {
  Line& line = lines_.back();
  if (line.pieces.empty()) line.height = emptyHeight;
  const double bottom = line.y + line.height;
  lines_.emplace_back().y = bottom;
  x_ = 0;
}

std::int64_t TextLayout::naturalHeight() const {
  const auto lowest = std::find_if(lines_.rbegin(), lines_.rend(),
                                   [](const Line& line) { return !line.pieces.empty(); });
  return lowest == lines_.rend() ? 0 : static_cast<std::int64_t>(lowest->y + lowest->height);
}

void TextLayout::draw(Canvas& canvas) const {
  for (const Line& line : lines_) {
    for (const Piece& piece : line.pieces) {
      // On one ground, whatever their sizes.
      const double y = line.y + partAboveGround * (line.height - piece.size.height);
      const Rect rect{{margin + piece.x, y}, piece.size};
      if (canvas.needsDrawing(rect)) {
        canvas.drawText(piece.text, rect, piece.font, piece.color, TextAlignmentLeft);
      }
    }
  }
}

}  // namespace qb
