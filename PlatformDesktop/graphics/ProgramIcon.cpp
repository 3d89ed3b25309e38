#include "PlatformDesktop/graphics/ProgramIcon.h"

#include <QFile>

#include "PlatformDesktop/graphics/DesktopImage.h"

static void initializeResources() { Q_INIT_RESOURCE(quillbox_images); }

namespace qb {

QIcon programIcon() {
  initializeResources();
  QFile logo(QStringLiteral(":/quillbox/images/QuillboxLogo.svg"));
  if (!logo.open(QIODevice::ReadOnly)) return {};
  const QByteArray svg = logo.readAll();
  QIcon icon;
  // Those that title bars, task bars and switchers ask for, at scale 1 and 2.
  for (const int edge : {16, 32, 48, 64, 128}) {
    icon.addPixmap(QPixmap::fromImage(renderSvg(svg, {edge, edge})));
  }
  return icon;
}

}  // namespace qb
