#include "Quillbox/activation/ProductWebSite.h"

#include "Platform/ApplicationControl.h"
#include "Platform/Platform.h"
#include "Platform/UserDefaults.h"

namespace qb {

namespace {

/// Nobody can own it: without a configured address no stranger's pages open.
constexpr const char* unconfiguredSite = "http://www.vorlane.invalid";

}  // namespace

std::string productWebSitePage(Platform& platform, const std::string& path) {
  const std::string site = platform.userDefaults().objectForKey(kProductWebSiteKey).stringValue();
  return (site.empty() ? unconfiguredSite : site) + path;
}

void openProductWebSitePage(Platform& platform, const std::string& path) {
  platform.applicationControl().openURL(productWebSitePage(platform, path));
}

}  // namespace qb
