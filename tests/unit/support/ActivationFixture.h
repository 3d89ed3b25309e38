#pragma once

#include <gmock/gmock.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/rows/TabRow.h"
#include "support/QuillboxFixture.h"
#include "support/TestItems.h"

namespace qb::test {

/// The launched program with one row of five test items, over an editor that is in front.
class ActivationFixture : public QuillboxFixture {
 protected:
  ActivationFixture() {
    editor = platform.processes().launchInFront({"org.editor", "Editor", "/apps/Editor.desktop"});
    row().setProvider(provider);
  }
  /// Keeps all promises to the platform: asked at the end of every test.
  void TearDown() override { EXPECT_THAT(platform.contractBreaches(), testing::IsEmpty()); }

  TabRow& row() const { return *host().tabRows().front(); }
  SimulatedKeyboard& keyboard() { return platform.keyboard(); }
  SimulatedPointer& pointer() { return platform.pointer(); }
  SimulatedWindowPeer& panel() { return *platform.windowServer().windows().front(); }

  bool isActive() const { return appDelegate->state() == ActivationStateActive; }
  std::string selectedName() const {
    const auto& item = row().selectedItem();
    return item ? item->name() : "none";
  }
  /// Presses and holds the keys in order.
  void hold(std::initializer_list<std::uint16_t> keyCodes) {
    for (const auto keyCode : keyCodes) keyboard().press(keyCode);
    platform.runPending();
  }
  /// Presses and lets go of one key, whatever else is held.
  void tap(std::uint16_t keyCode) {
    keyboard().type(keyCode);
    platform.runPending();
  }
  /// The key codes of the key-downs that have reached other programs.
  std::vector<int> keysReceivedByOthers() {
    std::vector<int> keyCodes;
    for (const auto& received : keyboard().frontApplicationReceived()) {
      if (received.type == EventTypeKeyDown) keyCodes.push_back(received.keyCode);
    }
    return keyCodes;
  }
  std::vector<ProcessSerialNumber> frontProcessRequests() {
    return platform.processes().frontProcessRequests();
  }
  void removeTap() {
    platform.accessibility().setTrusted(false);
    appDelegate->removeEventTaps();
  }

  ProcessSerialNumber editor;
  std::shared_ptr<TestProvider> provider = TestProvider::withItems(5);
};

}  // namespace qb::test
