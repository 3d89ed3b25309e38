#pragma once

#include <QColor>
#include <QImage>
#include <functional>
#include <string>

#include "PlatformDesktop/graphics/DesktopGraphics.h"
#include "PlatformDesktop/graphics/TextCache.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"
#include "QuillboxCommon/views/Canvas.h"
#include "QuillboxCommon/views/View.h"

namespace qb::pictures {

/// Where pictures are drawn as the program draws them, but on no display and in one font whatever
/// the user's is. One at a time; needs a QGuiApplication.
class Studio {
 public:
  Studio();
  DesktopGraphics& graphics() { return graphics_; }

  /// What `draw` draws on a ground of `size` points.
  QImage drawn(Size size, double scale, const QColor& ground,
               const std::function<void(Canvas&)>& draw);
  /// A view with its subviews, at its frame.
  QImage drawn(Size size, double scale, const QColor& ground, const std::shared_ptr<View>& view);

 private:
  SimulatedRunLoopHost host_;
  DesktopGraphics graphics_;
  TextCache texts_;
};

/// Nothing when the picture is the one that is kept under `name`, up to what other versions of the
/// libraries round otherwise; else what differs. A picture that differs is left in the folder of
/// findings, with one of the differences. With QUILLBOX_RENEW_PICTURES=1 in the environment it is
/// kept instead.
std::string differenceFromKept(const QImage& picture, const std::string& name);

/// Writes a PNG of all pictures of the program, in the sizes in which they are used, on light and
/// dark ground.
bool writeContactSheet(const std::string& file);

}  // namespace qb::pictures
