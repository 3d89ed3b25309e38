#include "Studio.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "PlatformDesktop/graphics/QPainterCanvas.h"
#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb::pictures {

namespace {

constexpr char fontFile[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
/// Of 255, in any of the four channels: what rounding may come to along an edge.
constexpr int tolerance = 12;
/// That part of all pixels may differ more, as glyphs do from one version to the next.
constexpr double tolerated = 0.002;

class NoIcons : public IconSource {
 public:
  QImage icon(const std::string&, int) override { return {}; }
  bool isApplication(const std::string&) const override { return false; }
};

int distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

bool keepsAnew() {
  const char* const wish = std::getenv("QUILLBOX_RENEW_PICTURES");
  return wish != nullptr && std::string(wish) == "1";
}

QString pathOf(const char* folder, const std::string& name) {
  return QString(folder) + '/' + qtString(name) + ".png";
}

}  // namespace

Studio::Studio() : graphics_(host_, std::make_shared<NoIcons>(), 1) {
  static const int font = QFontDatabase::addApplicationFont(fontFile);
  if (font < 0) throw std::runtime_error(std::string("no font at ") + fontFile);
  QFont pinned(QFontDatabase::applicationFontFamilies(font).first());
  pinned.setHintingPreference(QFont::PreferNoHinting);
  pinned.setStyleStrategy(QFont::NoSubpixelAntialias);
  QGuiApplication::setFont(pinned);
}

QImage Studio::drawn(Size size, double scale, const QColor& ground,
                     const std::function<void(Canvas&)>& draw) {
  QImage picture((QSizeF(size.width, size.height) * scale).toSize(),
                 QImage::Format_ARGB32_Premultiplied);
  picture.fill(ground);
  QPainterCanvas canvas(picture, picture.rect(), scale, texts_);
  draw(canvas);
  return picture;
}

QImage Studio::drawn(Size size, double scale, const QColor& ground,
                     const std::shared_ptr<View>& view) {
  return drawn(size, scale, ground, [&view, size](Canvas& canvas) {
    const auto root = std::make_shared<View>(Rect{{0, 0}, size});
    root->addSubview(view);
    root->display(canvas);
    view->removeFromSuperview();
  });
}

std::string differenceFromKept(const QImage& picture, const std::string& name) {
  const QString kept = pathOf(PICTURES, name);
  if (keepsAnew()) {
    QDir().mkpath(PICTURES);
    return picture.convertToFormat(QImage::Format_ARGB32).save(kept) ? "" : "it cannot be kept";
  }
  const QImage expected = QImage(kept).convertToFormat(QImage::Format_ARGB32);
  const QImage actual = picture.convertToFormat(QImage::Format_ARGB32);
  std::ostringstream findings;
  QImage difference;
  if (expected.isNull()) {
    findings << "none is kept";
  } else if (expected.size() != actual.size()) {
    findings << "the kept one has " << expected.width() << " x " << expected.height()
             << " pixels, this one " << actual.width() << " x " << actual.height();
  } else {
    difference = QImage(actual.size(), QImage::Format_RGB32);
    difference.fill(Qt::black);
    int differing = 0, largest = 0;
    for (int y = 0; y < actual.height(); ++y) {
      for (int x = 0; x < actual.width(); ++x) {
        const int apart = distance(actual.pixel(x, y), expected.pixel(x, y));
        largest = std::max(largest, apart);
        if (apart <= tolerance) continue;
        ++differing;
        difference.setPixel(x, y, qRgb(255, 255 - apart, 0));
      }
    }
    if (differing <= tolerated * actual.width() * actual.height()) return "";
    findings << differing << " pixels differ, by up to " << largest;
  }
  QDir().mkpath(FINDINGS);
  picture.save(pathOf(FINDINGS, name));
  if (!difference.isNull()) difference.save(pathOf(FINDINGS, name + "-difference"));
  findings << "; see " << pathOf(FINDINGS, name).toStdString();
  return findings.str();
}

}  // namespace qb::pictures
