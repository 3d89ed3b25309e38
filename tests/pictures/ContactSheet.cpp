#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

#include "PlatformDesktop/graphics/QtConversions.h"
#include "Studio.h"

namespace qb::pictures {

namespace {

constexpr int margin = 8;
constexpr int columnWidth = 376;
constexpr int columns = 4;
constexpr int captionHeight = 16;

/// Edges in device pixels: where the picture stands, at scale 1 and 2, largest first.
std::vector<double> usualEdges(const std::string& name, Size natural) {
  if (name.starts_with("Badge")) return {60, 40, 30, 20};
  const double edge = std::max(natural.width, natural.height);
  if (edge > 128) return {180};
  if (edge > 28) return {96, 44, 22};
  return {3 * edge, 2 * edge, edge};
}

QImage card(const Image& image, const std::string& name) {
  const Size natural = image.size();
  const double longest = std::max(natural.width, natural.height);
  const auto& source = dynamic_cast<const DesktopImage&>(*image.source());
  const std::vector<double> edges = usualEdges(name, natural);
  const int height = static_cast<int>(edges.front() * natural.height / longest) + 2 * margin;
  QImage card(columnWidth, height + captionHeight, QImage::Format_ARGB32_Premultiplied);
  card.fill(Qt::white);
  QPainter painter(&card);
  const int half = columnWidth / 2;
  painter.fillRect(0, 0, half, height, QColor(226, 229, 235));
  painter.fillRect(half, 0, half, height, QColor(30, 34, 42));
  for (const int left : {0, half}) {
    double x = left + margin / 2.0;
    for (const double edge : edges) {
      const QSize size = (QSizeF(natural.width, natural.height) * (edge / longest)).toSize();
      painter.drawImage(QPoint(static_cast<int>(x), (height - size.height()) / 2),
                        source.scaled(size));
      x += size.width() + margin / 2.0;
    }
  }
  painter.drawText(QRect(4, height, columnWidth - 8, captionHeight), Qt::AlignVCenter,
                   qtString(name));
  return card;
}

}  // namespace

bool writeContactSheet(const std::string& file) {
  Studio studio;
  std::vector<std::vector<QImage>> sheet(columns);
  std::vector<int> heights(columns, 0);
  for (const std::string& name : studio.graphics().imageNames("")) {
    const auto shortest = std::min_element(heights.begin(), heights.end()) - heights.begin();
    const auto column = static_cast<std::size_t>(shortest);
    sheet[column].push_back(card(studio.graphics().imageNamed(name), name));
    heights[column] += sheet[column].back().height();
  }
  QImage picture(columns * columnWidth, *std::max_element(heights.begin(), heights.end()),
                 QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  for (std::size_t column = 0; column < sheet.size(); ++column) {
    int y = 0;
    for (const QImage& each : sheet[column]) {
      painter.drawImage(static_cast<int>(column) * columnWidth, y, each);
      y += each.height();
    }
  }
  painter.end();
  return picture.save(qtString(file));
}

}  // namespace qb::pictures
