#include "PlatformDesktop/graphics/PdfPage.h"

#include <sys/resource.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb {

namespace {

constexpr int timeLimit = 5000;
constexpr rlim_t secondsOfWork = 5;
constexpr rlim_t memoryLimit = rlim_t{1} << 30;
/// A poster in all of its detail would fill the memory.
constexpr double largestEdge = 4096;

void limit(int resource, rlim_t most) {
  const rlimit limits{most, most};
  setrlimit(static_cast<__rlimit_resource>(resource), &limits);
}

/// What the program has written when it ended well and in time; otherwise nothing.
QByteArray outputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
  process.setProcessEnvironment(environment);
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  process.setChildProcessModifier([] {
    limit(RLIMIT_CPU, secondsOfWork);
    limit(RLIMIT_AS, memoryLimit);
  });
  process.start(program, arguments);
  if (!process.waitForStarted(timeLimit)) return {};
  if (!process.waitForFinished(timeLimit)) {
    process.kill();
    process.waitForFinished();
    return {};
  }
  const bool isGood = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
  return isGood ? process.readAllStandardOutput() : QByteArray();
}

/// In points as it is read, turned where it says so.
std::optional<Size> sizeOfFirstPage(const QString& path) {
  const QString said =
      QString::fromUtf8(outputOf(QStringLiteral("pdfinfo"), {"-f", "1", "-l", "1", path}));
  static const QRegularExpression sizeLine(
      QStringLiteral("^Page +1 size: +([0-9.]+) x ([0-9.]+) pts"),
      QRegularExpression::MultilineOption);
  static const QRegularExpression turnLine(QStringLiteral("^Page +1 rot: +(90|270)$"),
                                           QRegularExpression::MultilineOption);
  const auto match = sizeLine.match(said);
  Size size{match.captured(1).toDouble(), match.captured(2).toDouble()};
  if (!(size.width >= 1) || !(size.height >= 1)) return std::nullopt;
  if (turnLine.match(said).hasMatch()) std::swap(size.width, size.height);
  return size;
}

}  // namespace

std::optional<LoadedPicture> loadFirstPageOfPdf(const std::string& path,
                                                const PictureDetail& detail) {
  const QString file = qtString(path);
  const auto size = sizeOfFirstPage(file);
  if (!size) return std::nullopt;
  const Size shown = shownSize(*size, detail);
  const double factor = std::min(detail.scale, largestEdge / std::max(shown.width, shown.height));
  const auto pixels = [factor](double points) {
    return QString::number(std::max(1L, std::lround(points * factor)));
  };
  const QImage page = QImage::fromData(
      outputOf(QStringLiteral("pdftocairo"),
               {"-png", "-singlefile", "-f", "1", "-l", "1", "-cropbox", "-scale-to-x",
                pixels(shown.width), "-scale-to-y", pixels(shown.height), file, "-"}),
      "PNG");
  return page.isNull() ? std::nullopt : std::optional(LoadedPicture{page, *size});
}

}  // namespace qb
