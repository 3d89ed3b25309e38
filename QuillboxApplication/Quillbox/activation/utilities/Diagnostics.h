#pragma once

#include <string>

#include "QuillboxCommon/Geometry.h"

namespace qb {

class Quillbox;

std::string stringFromCGRect(const Rect& rect);
std::string stringFromCGPoint(Point point);

/// Writes where the panel's views are, and how much of them shows, to the log. Main thread.
void logPanelViews(Quillbox& facade);

}  // namespace qb
