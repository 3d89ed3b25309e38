#include "PlatformDesktop/graphics/TextCache.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <array>
#include <cmath>
#include <cstring>

#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb {

namespace {

constexpr qsizetype maximumBytes = 4 << 20;

template <class T>
void appendBytes(std::string& key, const T& value) {
  std::array<char, sizeof(T)> bytes;
  std::memcpy(bytes.data(), &value, sizeof value);
  key.append(bytes.data(), bytes.size());
}

std::string keyOf(std::string_view text, const Font& font, const Color& color, double scale) {
  std::string key;
  key.reserve(text.size() + 25);
  appendBytes(key, font.size);
  appendBytes(key, qtColor(color).rgba());
  appendBytes(key, scale);
  key += font.bold ? 'b' : 'r';
  key += font.italic ? 'i' : 'u';
  key += text;
  return key;
}

}  // namespace

QFont qtFont(const Font& font) {
  static const QFont base = QGuiApplication::font();
  QFont result = base;
  // Qt takes whole pixels only.
  result.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size))));
  result.setBold(font.bold);
  result.setItalic(font.italic);
  return result;
}

std::vector<std::string_view> linesOfText(std::string_view text) {
  std::vector<std::string_view> lines;
  while (true) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return lines;
    const bool both = text.substr(end, 2) == "\r\n";
    text.remove_prefix(end + (both ? 2 : 1));
  }
}

const TextCache::Line& TextCache::line(std::string_view text, const Font& font, const Color& color,
                                       double scale) {
  std::string key = keyOf(text, font, color, scale);
  if (const auto found = index_.find(key); found != index_.end()) {
    entries_.splice(entries_.begin(), entries_, found->second);
    return entries_.front().line;
  }
  entries_.push_front({std::move(key), render(text, font, color, scale)});
  index_.emplace(entries_.front().key, entries_.begin());
  bytes_ += entries_.front().line.image.sizeInBytes();
  while (bytes_ > maximumBytes && entries_.size() > 1) {
    bytes_ -= entries_.back().line.image.sizeInBytes();
    index_.erase(entries_.back().key);
    entries_.pop_back();
  }
  return entries_.front().line;
}

TextCache::Line TextCache::render(std::string_view text, const Font& font, const Color& color,
                                  double scale) {
  QFont qt = qtFont(font);
  const QFontMetricsF metrics(qt);
  const QString string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  // Room for what italics, accents and swashes put outside their cells.
  const double margin = std::ceil(font.size / 4) + 1;
  const QSizeF size(metrics.horizontalAdvance(string) + 2 * margin, metrics.height() + 2 * margin);
  QImage image((size * scale).toSize() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.scale(scale, scale);
  painter.setFont(qt);
  painter.setPen(qtColor(color));
  painter.drawText(QPointF(margin, margin + metrics.ascent()), string);
  painter.end();
  const int shift = static_cast<int>(std::lround(margin * scale));
  return {std::move(image), {-shift, -shift}};
}

}  // namespace qb
