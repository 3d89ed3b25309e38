#pragma once

#include <gmock/gmock.h>

#include <initializer_list>
#include <memory>
#include <vector>

#include "ContractPlatform.h"
#include "Platform/EventTap.h"
#include "Platform/KeyCodes.h"
#include "Platform/Keyboard.h"
#include "Platform/Processes.h"
#include "Platform/WindowServer.h"

namespace qb {

/// What came to a window.
class ContractWindowClient : public WindowPeerClient {
 public:
  void paint(Canvas&, const Rect& dirty) override { painted.push_back(dirty); }
  void deliver(const Event& event) override { events.push_back(event); }

  int count(EventType type) const {
    int number = 0;
    for (const Event& event : events) number += event.type == type ? 1 : 0;
    return number;
  }
  const Event* last(EventType type) const {
    const Event* found = nullptr;
    for (const Event& event : events) {
      if (event.type == type) found = &event;
    }
    return found;
  }

  std::vector<Event> events;
  std::vector<Rect> painted;
};

/// A desktop and the platform on it. Nothing is asserted to have stayed away before something that
/// was sent after it has arrived: that is what `typeMarker` is for.
class ContractTest : public ::testing::Test {
 protected:
  ContractTest() : desktop_(makeContractPlatform()), platform_(desktop_->platform()) {}
  /// The platform goes while what a test has given it to call still stands: its end runs the loop.
  void TearDown() override { desktop_.reset(); }

  bool waitUntil(const std::function<bool()>& done) { return desktop_->waitUntil(done); }
  bool waitForFront(ProcessSerialNumber number) {
    return waitUntil([&] { return platform_.processes().getFrontProcess() == number; });
  }

  void typeKey(std::uint16_t keyCode, std::initializer_list<std::uint16_t> modifiers = {}) {
    for (const std::uint16_t modifier : modifiers) desktop_->pressKey(modifier);
    desktop_->pressKey(keyCode);
    desktop_->releaseKey(keyCode);
    for (auto each = std::rbegin(modifiers); each != std::rend(modifiers); ++each) {
      desktop_->releaseKey(*each);
    }
  }
  /// Types a key that nobody takes and waits until the client has it: whatever was typed before
  /// has found its way by then.
  bool typeMarker(ProcessSerialNumber client) {
    const int before = desktop_->keysReceived(client, markerKey).keyUps;
    typeKey(markerKey);
    return waitUntil([&] { return desktop_->keysReceived(client, markerKey).keyUps > before; });
  }
  int keyDowns(ProcessSerialNumber client, std::uint16_t keyCode) {
    return desktop_->keysReceived(client, keyCode).keyDowns;
  }

  static constexpr std::uint16_t markerKey = KeyCodeX;

  std::unique_ptr<ContractPlatform> desktop_;
  Platform& platform_;
};

}  // namespace qb
