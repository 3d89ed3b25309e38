#pragma once

#include <xcb/xcb.h>

#include <QImage>

namespace qb {

/// The icon that a window carries, the picture nearest to `pixels` in each direction, larger rather
/// than smaller; null when it has none. Over a connection of its own: any thread.
QImage iconOfWindow(xcb_window_t window, int pixels);

}  // namespace qb
