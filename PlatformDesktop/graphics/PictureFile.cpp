#include "PlatformDesktop/graphics/PictureFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <algorithm>
#include <cmath>

#include "PlatformDesktop/graphics/PdfPage.h"
#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb {

namespace {

/// A decoder that can leave out detail still has to give more than is kept, for what is kept to be
/// smooth.
constexpr int decodedOversize = 2;

/// Without waiting for the other end of a pipe.
bool openPlainFile(QFile& file, const std::string& path) {
  const int number = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (number < 0) return false;
  struct stat status {};
  if (fstat(number, &status) == 0 && S_ISREG(status.st_mode) &&
      file.open(number, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
    return true;
  }
  close(number);
  return false;
}

QSize pixelsFor(QSize all, const PictureDetail& detail) {
  if (!detail.largest) return all;
  const Size shown = shownSize({double(all.width()), double(all.height())}, detail);
  const QSize wanted(static_cast<int>(std::ceil(shown.width * detail.scale)),
                     static_cast<int>(std::ceil(shown.height * detail.scale)));
  return wanted.boundedTo(all).expandedTo({1, 1});
}

std::optional<LoadedPicture> loadImage(QIODevice& bytes, const PictureDetail& detail) {
  QImageReader reader(&bytes);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QSize stored = reader.size();
  const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
  const QSize upright = isTurned ? stored.transposed() : stored;
  if (stored.isValid() && detail.largest && reader.supportsOption(QImageIOHandler::ScaledSize)) {
    const QSize enough = pixelsFor(upright, detail) * decodedOversize;
    if (enough.width() < upright.width())
      reader.setScaledSize(isTurned ? enough.transposed() : enough);
  }
  QImage image = reader.read();
  if (image.isNull()) return std::nullopt;
  const QSize all = upright.isValid() ? upright : image.size();
  const QSize pixels = pixelsFor(all, detail);
  if (image.size() != pixels) {
    image = image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  return LoadedPicture{std::move(image), {double(all.width()), double(all.height())}};
}

}  // namespace

Size shownSize(Size naturalSize, const PictureDetail& detail) {
  if (!detail.largest) return naturalSize;
  const double factor = std::min({1.0, detail.largest->width / naturalSize.width,
                                  detail.largest->height / naturalSize.height});
  return {naturalSize.width * factor, naturalSize.height * factor};
}

std::optional<LoadedPicture> loadPictureFile(const std::string& path, const PictureDetail& detail) {
  QFile file;
  if (!openPlainFile(file, path)) return std::nullopt;
  const bool isPdf =
      QFileInfo(qtString(path)).suffix().compare(QLatin1String("pdf"), Qt::CaseInsensitive) == 0;
  return isPdf ? loadFirstPageOfPdf(path, detail) : loadImage(file, detail);
}

std::optional<LoadedPicture> loadPictureData(const PropertyList::Data& data,
                                             const PictureDetail& detail) {
  QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                             static_cast<qsizetype>(data.size()));
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  return loadImage(buffer, detail);
}

PropertyList::Data pngOfPictureFile(const std::string& path) {
  const auto picture = loadPictureFile(path, {});
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!picture || !picture->pixels.save(&buffer, "PNG")) return {};
  return {bytes.begin(), bytes.end()};
}

}  // namespace qb
