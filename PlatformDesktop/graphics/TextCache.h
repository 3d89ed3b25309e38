#pragma once

#include <QFont>
#include <QImage>
#include <QString>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "QuillboxCommon/views/Text.h"

namespace qb {

/// The system's font at a size in points of ours: as many pixels at scale 1. Main thread.
QFont qtFont(const Font& font);

/// Text lines as pictures: laying glyphs out costs more than all else that a panel draws, and the
/// same few labels come again and again. The lines drawn last are kept. Main thread.
class TextCache {
 public:
  struct Line {
    /// Premultiplied, in device pixels.
    QImage image;
    /// From the line's nominal top left corner, in device pixels: glyphs may stick out of it.
    QPoint offset;
  };
  /// One line in one colour; `scale` is the device pixels of a point.
  const Line& line(std::string_view text, const Font& font, const Color& color, double scale);

 private:
  struct Entry {
    std::string key;
    Line line;
  };

  static Line render(std::string_view text, const Font& font, const Color& color, double scale);

  std::list<Entry> entries_;
  std::unordered_map<std::string_view, std::list<Entry>::iterator> index_;
  qsizetype bytes_ = 0;
};

/// The lines of a text; each of "\n", "\r" and "\r\n" ends one.
std::vector<std::string_view> linesOfText(std::string_view text);

}  // namespace qb
