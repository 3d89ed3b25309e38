#pragma once

#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb::test {

/// Makes the desktop one on which this version of the program has run before, so that a launch
/// greets nobody. A settings file that is there keeps what it says; otherwise there is one that
/// says what the defaults are.
inline void noteLaunchedBefore(SimulatedPlatform& platform) {
  constexpr const char* settingsFile = "~/Library/Preferences/com.vorlane.quillbox.settings";
  PropertyList settings =
      platform.fileSystem()
          .propertyList(settingsFile)
          .value_or(PropertyList::dictionary(
              {{"ActivatesOnOptionTab", true}, {"ActivatesOnCommandTab", true}}));
  settings.setBool(true, "HasPerformedOneTimeStartUp");
  platform.fileSystem().putPropertyList(settingsFile, settings);
  platform.userDefaults().setObject(PropertyList::Date{700'000'000},
                                    "kInitialApplicationLaunchVersionTwoKey");
  platform.userDefaults().setObject("Welcomed", platform.applicationControl().shortVersionString());
}

}  // namespace qb::test
