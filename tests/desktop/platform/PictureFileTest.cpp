#include "PlatformDesktop/graphics/PictureFile.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QBuffer>
#include <QByteArray>
#include <QPainter>
#include <QPdfWriter>

#include "TemporaryFolder.h"

namespace qb {
namespace {

constexpr PictureDetail allOfIt{};

/// Red above, blue below.
QImage twoColors(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::red);
  QPainter(&image).fillRect(0, height / 2, width, height, Qt::blue);
  return image;
}

std::string bytesOf(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format));
  return bytes.toStdString();
}

class PictureFileTest : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
};

TEST_F(PictureFileTest, AnImageHasAllOfItsPixels) {
  for (const char* format : {"PNG", "JPG", "BMP"}) {
    const auto path = folder_.write(std::string("a.") + format, bytesOf(twoColors(60, 40), format));
    const auto picture = loadPictureFile(path, allOfIt);
    ASSERT_TRUE(picture) << format;
    EXPECT_EQ(picture->pixels.size(), QSize(60, 40)) << format;
    EXPECT_EQ(picture->naturalSize, (Size{60, 40})) << format;
    EXPECT_GT(picture->pixels.pixelColor(5, 5).red(), 250) << format;
    EXPECT_GT(picture->pixels.pixelColor(5, 35).blue(), 250) << format;
  }
}

TEST_F(PictureFileTest, NoMoreDetailIsKeptThanShows) {
  const auto path = folder_.write("a.jpg", bytesOf(twoColors(1600, 800), "JPG"));
  struct Row {
    PictureDetail detail;
    QSize pixels;
  };
  for (const Row& row :
       {Row{{Size{100, 100}, 1}, {100, 50}}, Row{{Size{100, 100}, 2}, {200, 100}},
        Row{{Size{1000, 100}, 1.5}, {300, 150}}, Row{{Size{4000, 4000}, 2}, {1600, 800}},
        Row{{Size{900, 900}, 2}, {1600, 800}}}) {
    const auto picture = loadPictureFile(path, row.detail);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixels.size(), row.pixels);
    EXPECT_EQ(picture->naturalSize, (Size{1600, 800}));
    EXPECT_GT(picture->pixels.pixelColor(5, 5).red(), 250);
    EXPECT_GT(picture->pixels.pixelColor(5, row.pixels.height() - 5).blue(), 250);
  }
}

TEST_F(PictureFileTest, BytesAreReadLikeAFile) {
  const std::string bytes = bytesOf(twoColors(1600, 800), "TIFF");
  const PropertyList::Data data(bytes.begin(), bytes.end());
  const auto all = loadPictureData(data, allOfIt);
  ASSERT_TRUE(all);
  EXPECT_EQ(all->pixels.size(), QSize(1600, 800));
  const auto small = loadPictureData(data, {Size{100, 100}, 2});
  ASSERT_TRUE(small);
  EXPECT_EQ(small->pixels.size(), QSize(200, 100));
  EXPECT_EQ(small->naturalSize, (Size{1600, 800}));
  EXPECT_GT(small->pixels.pixelColor(5, 5).red(), 250);
  EXPECT_FALSE(loadPictureData({}, allOfIt));
  EXPECT_FALSE(loadPictureData({'n', 'o'}, allOfIt));
}

TEST_F(PictureFileTest, APhotographStandsUpright) {
  // A camera that was held on its side says so ahead of the picture.
  const std::string turned(
      "\xff\xd8\xff\xe1\x00\x22"
      "Exif\0\0"
      "MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0",
      38);
  const auto path = folder_.write("a.jpg", turned + bytesOf(twoColors(80, 40), "JPG").substr(2));
  for (const PictureDetail& detail : {allOfIt, PictureDetail{Size{1000, 20}, 1}}) {
    const auto picture = loadPictureFile(path, detail);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->naturalSize, (Size{40, 80}));
    EXPECT_EQ(picture->pixels.size(), detail.largest ? QSize(10, 20) : QSize(40, 80));
    const QImage& pixels = picture->pixels;
    EXPECT_GT(pixels.pixelColor(pixels.width() - 2, 10).red(), 200);
    EXPECT_GT(pixels.pixelColor(1, 10).blue(), 200);
  }
}

TEST_F(PictureFileTest, TheContentsDecideNotTheName) {
  const auto path = folder_.write("a.png", bytesOf(twoColors(60, 40), "JPG"));
  EXPECT_TRUE(loadPictureFile(path, allOfIt));
}

TEST_F(PictureFileTest, AnyImageCanBeHadAsPNG) {
  const auto path = folder_.write("a.bmp", bytesOf(twoColors(60, 40), "BMP"));
  const auto data = pngOfPictureFile(path);
  const QImage image = QImage::fromData(data.data(), static_cast<int>(data.size()), "PNG");
  EXPECT_EQ(image.size(), QSize(60, 40));
  EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::red));
  EXPECT_THAT(pngOfPictureFile(folder_.path("missing.png")), ::testing::IsEmpty());
}

TEST_F(PictureFileTest, WhatIsNoPictureGivesNone) {
  EXPECT_FALSE(loadPictureFile(folder_.path("missing.png"), allOfIt));
  EXPECT_FALSE(loadPictureFile(folder_.path(), allOfIt));
  EXPECT_FALSE(loadPictureFile(folder_.write("empty.png", ""), allOfIt));
  EXPECT_FALSE(loadPictureFile(folder_.write("text.png", "no picture"), allOfIt));
  const std::string whole = bytesOf(twoColors(600, 400), "PNG");
  EXPECT_FALSE(loadPictureFile(folder_.write("cut.png", whole.substr(0, 40)), allOfIt));
  EXPECT_FALSE(loadPictureFile(folder_.write("text.pdf", "no page"), allOfIt));
}

TEST_F(PictureFileTest, APipeIsNotWaitedFor) {
  for (const char* name : {"a.png", "a.pdf"}) {
    ASSERT_EQ(mkfifo(folder_.path(name).c_str(), 0600), 0);
    EXPECT_FALSE(loadPictureFile(folder_.path(name), allOfIt));
  }
}

TEST_F(PictureFileTest, APictureThatWouldFillTheMemoryGivesNone) {
  // What a PNG of 60000 by 60000 pixels begins with.
  std::string giant("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\xea\x60\0\0\xea\x60\x08\x02\0\0\0", 29);
  giant += "\x0f\xb0\xe2\x15";
  EXPECT_FALSE(loadPictureFile(folder_.write("a.png", giant), allOfIt));
  EXPECT_FALSE(loadPictureFile(folder_.path("a.png"), {Size{768, 512}, 1}));
}

class PdfPageTest : public PictureFileTest {
 protected:
  /// A page of 300 by 200 points, blue but for its right half, and a green one behind it.
  std::string writePdf(const std::string& name) {
    const std::string path = folder_.path(name);
    QPdfWriter writer(QString::fromStdString(path));
    writer.setPageSize(QPageSize(QSizeF(300, 200), QPageSize::Point));
    writer.setPageMargins({});
    QPainter painter(&writer);
    const QRect all = painter.viewport();
    painter.fillRect(QRect(0, 0, all.width() / 2, all.height()), Qt::blue);
    writer.newPage();
    painter.fillRect(all, Qt::green);
    return path;
  }
};

TEST_F(PdfPageTest, TheFirstPageStandsOnWhite) {
  const auto path = writePdf("a.PDF");
  const auto page = loadPictureFile(path, {Size{768, 512}, 1});
  ASSERT_TRUE(page) << "this needs pdfinfo and pdftocairo, of the package poppler-utils";
  EXPECT_EQ(page->naturalSize, (Size{300, 200}));
  EXPECT_EQ(page->pixels.size(), QSize(300, 200));
  EXPECT_EQ(page->pixels.pixelColor(50, 100), QColor(Qt::blue));
  EXPECT_EQ(page->pixels.pixelColor(250, 100), QColor(Qt::white));
}

TEST_F(PdfPageTest, ItIsDrawnInTheDetailThatShows) {
  const auto path = writePdf("a page.pdf");
  const auto sharp = loadPictureFile(path, {Size{768, 512}, 2});
  ASSERT_TRUE(sharp);
  EXPECT_EQ(sharp->pixels.size(), QSize(600, 400));
  EXPECT_EQ(sharp->naturalSize, (Size{300, 200}));
  const auto small = loadPictureFile(path, {Size{30, 30}, 1});
  ASSERT_TRUE(small);
  EXPECT_EQ(small->pixels.size(), QSize(30, 20));
}

}  // namespace
}  // namespace qb
