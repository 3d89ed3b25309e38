#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "PlatformSimulated/SimulatedPlatform.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/views/Window.h"
#include "support/LaunchedBefore.h"
#include "support/PrintGeometry.h"

namespace qb::test {

/// The whole program, launched a while ago and not for the first time, on a small desktop of one
/// screen of 1440 by 900 points.
class QuillboxFixture : public testing::Test {
 protected:
  QuillboxFixture() : appDelegate(AppDelegate::create(platform)) {
    noteLaunchedBefore(platform);
    appDelegate->applicationDidFinishLaunching();
    // Until the word that it is running has left the screen.
    platform.runFor(3.01);
  }
  ~QuillboxFixture() override { appDelegate->applicationWillTerminate(); }

  HostView& host() const { return *appDelegate->hostView(); }
  Settings& settings() const { return appDelegate->settings(); }
  void open(std::int32_t method) { appDelegate->activateApplicationWithActivationMethod(method); }
  void close() { appDelegate->dismissApplicationWithInvocation(false, false); }

  SimulatedPlatform platform;
  std::shared_ptr<AppDelegate> appDelegate;
};

}  // namespace qb::test
