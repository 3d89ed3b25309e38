#pragma once

#include <QIcon>

namespace qb {

/// The program's own mark, for the windows that a window manager or a task bar shows. Main thread.
QIcon programIcon();

}  // namespace qb
