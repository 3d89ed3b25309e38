#include "PlatformDesktop/graphics/DesktopGraphics.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "PlatformDesktop/graphics/PictureFile.h"
#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/graphics/TextCache.h"

/// Of a library that is linked in, resources must be asked for; the macro knows no namespaces.
static void initializeResources() { Q_INIT_RESOURCE(quillbox_images); }

namespace qb {

namespace {

/// Icons are natural at this size, as large as most are ever drawn.
constexpr double iconEdge = 128;
/// The largest item of a row takes so many points.
constexpr double largestIconEdge = 192;
constexpr Size iconSize{iconEdge, iconEdge};

/// Where the build puts the pictures that are compiled into the program.
constexpr char resourceFolder[] = ":/quillbox/images/";
constexpr char resourceExtension[] = ".svg";

std::shared_ptr<const SvgImage> resourceImage(const std::string& name) {
  QFile resource(resourceFolder + qtString(name) + resourceExtension);
  if (!resource.open(QIODevice::ReadOnly)) return nullptr;
  const QByteArray svg = resource.readAll();
  return sizeOfSvg(svg).isEmpty() ? nullptr : std::make_shared<const SvgImage>(svg);
}

/// Icons fill a square; others stand in the middle of one.
QImage inSquare(const QImage& image) {
  if (image.width() == image.height()) return image;
  const int edge = std::max(image.width(), image.height());
  QImage square(edge, edge, QImage::Format_ARGB32_Premultiplied);
  square.fill(Qt::transparent);
  QPainter painter(&square);
  painter.drawImage((edge - image.width()) / 2, (edge - image.height()) / 2, image);
  return square;
}

}  // namespace

DesktopGraphics::DesktopGraphics(RunLoopHost& host, std::shared_ptr<IconSource> icons, double scale)
    : host_(host), icons_(std::move(icons)), scale_(scale) {
  initializeResources();
}

DesktopGraphics::~DesktopGraphics() = default;

Size DesktopGraphics::measureText(std::string_view text, const Font& font) const {
  const QFontMetricsF metrics(qtFont(font));
  double width = 0;
  for (const std::string_view line : linesOfText(text)) {
    width = std::max(width, metrics.horizontalAdvance(qtString(line)));
  }
  return {std::ceil(width), std::ceil(metrics.height())};
}

Image DesktopGraphics::imageNamed(const std::string& name) {
  const auto [known, isNew] = named_.try_emplace(name);
  if (isNew) {
    known->second = Image(resourceImage(name));
  }
  return known->second;
}

std::vector<std::string> DesktopGraphics::imageNames(std::string_view prefix) const {
  const QString pattern = qtString(prefix) + '*' + resourceExtension;
  std::vector<std::string> names;
  for (const QFileInfo& file : QDir(resourceFolder).entryInfoList({pattern}, QDir::Files)) {
    names.push_back(file.completeBaseName().toStdString());
  }
  std::sort(names.begin(), names.end());
  return names;
}

Image DesktopGraphics::imageWithSize(Size size, std::function<void(Canvas&)> draw) {
  if (Rect{{0, 0}, size}.isEmpty()) return {};
  return Image(std::make_shared<const DrawnImage>(size, std::move(draw)));
}

Image DesktopGraphics::imageWithData(const PropertyList::Data& data, std::optional<Size> largest) {
  auto picture = loadPictureData(data, {largest, scale_});
  if (!picture) return {};
  return Image(
      std::make_shared<const PixelImage>(std::move(picture->pixels), picture->naturalSize));
}

std::optional<PropertyList::Data> DesktopGraphics::pngDataOfImage(const Image& image) const {
  const auto source = std::dynamic_pointer_cast<const DesktopImage>(image.source());
  if (!source) return std::nullopt;
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  if (!source->scaled(source->ownPixels()).save(&buffer, "PNG")) return std::nullopt;
  return PropertyList::Data(png.begin(), png.end());
}

Image DesktopGraphics::iconForFile(const std::string& path,
                                   std::function<void(const Image&)> update) {
  IconRecord& record = records_[path];
  if (record.known) return record.image;
  if (!record.image) record.image = genericIcon(path);
  if (update) record.waiting.push_back(std::move(update));
  if (!record.loading) {
    record.loading = true;
    load(path);
  }
  return record.image;
}

Image DesktopGraphics::genericIcon(const std::string& path) {
  Image icon = imageNamed(icons_->isApplication(path) ? "ApplicationIcon" : "FileIcon");
  icon.setSize(iconSize);
  return icon;
}

void DesktopGraphics::load(const std::string& path) {
  const int pixels = static_cast<int>(std::lround(largestIconEdge * scale_));
  const auto deliver = [this, alive = std::weak_ptr<const bool>(lifeSign_),
                        path](std::shared_ptr<const PixelImage> icon) {
    executeBlockAfterDelay(
        [this, alive, path, icon = std::move(icon)] {
          if (alive.lock()) loaded(path, icon);
        },
        0);
  };
  host_.runInBackground([icons = icons_, path, pixels, deliver] {
    QImage image = icons->icon(path, pixels);
    if (std::max(image.width(), image.height()) > pixels) {
      image = image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    deliver(image.isNull() ? nullptr
                           : std::make_shared<const PixelImage>(inSquare(image), iconSize));
  });
}

void DesktopGraphics::loaded(const std::string& path, std::shared_ptr<const PixelImage> icon) {
  IconRecord& record = records_[path];
  record.loading = false;
  record.known = !std::exchange(record.outdated, false);
  if (icon) record.image = Image(std::move(icon));
  const auto waiting = std::exchange(record.waiting, {});
  const Image image = record.image;
  for (const auto& update : waiting) update(image);
}

void DesktopGraphics::freeIconForFile(const std::string& path) {
  const auto found = records_.find(path);
  if (found == records_.end()) return;
  if (found->second.loading) {
    found->second.outdated = true;
  } else {
    records_.erase(found);
  }
}

void DesktopGraphics::loadImageOfFile(const std::string& path, Size largest,
                                      std::function<void(const Image&)> completion) {
  host_.runInBackground([alive = std::weak_ptr<const bool>(lifeSign_), path,
                         detail = PictureDetail{largest, scale_},
                         completion = std::move(completion)] {
    auto picture = loadPictureFile(path, detail);
    std::shared_ptr<const PixelImage> image;
    if (picture) {
      image = std::make_shared<const PixelImage>(std::move(picture->pixels), picture->naturalSize);
    }
    executeBlockAfterDelay(
        [alive, image = std::move(image), completion] {
          if (!alive.expired()) completion(Image(image));
        },
        0);
  });
}

void DesktopGraphics::loadPNGDataOfFile(const std::string& path,
                                        std::function<void(const PropertyList::Data&)> completion) {
  host_.runInBackground(
      [alive = std::weak_ptr<const bool>(lifeSign_), path, completion = std::move(completion)] {
        executeBlockAfterDelay(
            [alive, data = pngOfPictureFile(path), completion] {
              if (!alive.expired()) completion(data);
            },
            0);
      });
}

void DesktopGraphics::forgetIcons() {
  for (auto& [path, record] : records_) record.known = false;
}

}  // namespace qb
