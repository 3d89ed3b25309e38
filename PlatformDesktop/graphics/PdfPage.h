#pragma once

#include <optional>
#include <string>

#include "PlatformDesktop/graphics/PictureFile.h"

namespace qb {

/// The first page of a PDF on white, natural at its size on paper. Poppler's programs draw it, in
/// processes of their own with little time and memory: what a document from anywhere does to them,
/// this program survives. None when they are missing, and for what they cannot draw. Any thread;
/// may take seconds.
std::optional<LoadedPicture> loadFirstPageOfPdf(const std::string& path,
                                                const PictureDetail& detail);

}  // namespace qb
