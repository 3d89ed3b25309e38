#pragma once

#include <string>

namespace qb {

class Platform;

/// The default under which whoever ships the product keeps the address of its web site.
inline constexpr const char* kProductWebSiteKey = "ProductWebSite";

/// The address of a page; `path` begins with a slash.
std::string productWebSitePage(Platform& platform, const std::string& path);
/// Opens a page in the user's browser.
void openProductWebSitePage(Platform& platform, const std::string& path);

}  // namespace qb
