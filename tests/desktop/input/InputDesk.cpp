#include "InputDesk.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>

#include "PlatformDesktop/input/KeyCodeTable.h"

namespace qb::test {

namespace {

/// The code of a key that nobody takes.
constexpr std::uint16_t probe = 101;

}  // namespace

void LogRecorder::write(std::string_view text) {
  const std::lock_guard lock(mutex_);
  lines_.emplace_back(text);
}

int LogRecorder::count(std::string_view text) const {
  const std::lock_guard lock(mutex_);
  return static_cast<int>(std::count(lines_.begin(), lines_.end(), text));
}

InputUnderTest::InputUnderTest(const std::string& display)
    : bell_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  DesktopInputHost host;
  host.wake = [bell = bell_] {
    const std::uint64_t one = 1;
    EXPECT_EQ(write(bell, &one, sizeof one), static_cast<ssize_t>(sizeof one));
  };
  host.currentMode = [this] { return mode; };
  host.pointerSpace = [this] { return space; };
  host.isOwnWindow = [this](std::uint32_t window) {
    ++windowsAskedFor;
    return std::find(ownWindows.begin(), ownWindows.end(), window) != ownWindows.end();
  };
  host.isAllowed = [this] { return allowed; };
  auto input = DesktopInput::create(std::move(host), display.c_str());
  if (auto* error = std::get_if<InputError>(&input)) {
    ADD_FAILURE() << error->message;
    return;
  }
  input_ = std::get<std::unique_ptr<DesktopInput>>(std::move(input));
  input_->hotKeys().installEventHandler([this](const HotKeyPress& press) {
    hotKeys.push_back(press.id);
    return true;
  });
}

InputUnderTest::~InputUnderTest() {
  input_.reset();
  close(bell_);
}

void InputUnderTest::createTap(const TapRules& rules) {
  ASSERT_TRUE(input_->eventTap().create([this](const TappedEvent& event) {
    tapped.push_back(event);
    const bool passes = !rules_.swallows(event.type, event.keyCode, event.flags);
    if (onTapped) onTapped(event);
    return passes;
  }));
  for (const auto each : {RunLoopMode::Default, RunLoopMode::EventTracking, RunLoopMode::Graphics,
                          RunLoopMode::ModalPanel, RunLoopMode::EventOnly}) {
    input_->eventTap().addToRunLoop(each);
  }
  setRules(rules);
}

void InputUnderTest::setRules(const TapRules& rules) {
  rules_ = rules;
  input_->eventTap().setRules(rules);
}

void InputUnderTest::setEveryKeyDown(bool everyKeyDown) {
  TapRules rules = rules_;
  rules.everyKeyDown = everyKeyDown;
  setRules(rules);
}

void InputUnderTest::pump() {
  std::uint64_t rings = 0;
  if (read(bell_, &rings, sizeof rings) > 0) input_->drain();
}

InputDesk::InputDesk(WindowManagerKeys keys)
    : windowManager_(startWindowManager(server_.display(), keys)),
      client_(server_.display()),
      input_(server_.display()) {
  client_.openWindow();
  client_.takeFocus();
  returnsSeen_ = client_.keyboardReturns;
}

void InputDesk::restartWindowManager(WindowManagerKeys keys) {
  windowManager_.end();
  windowManager_ = startWindowManager(server_.display(), keys);
  client_.takeFocus();
  returnsSeen_ = client_.keyboardReturns;
}

bool InputDesk::waitFor(const std::function<bool()>& predicate) {
  return waitUntil({&client_, &input_}, predicate);
}

void InputDesk::typeProbe() {
  const auto code = *KeyCodeTable::xCodeFromKeyCode(probe);
  client_.tap(probe);
  ASSERT_TRUE(waitFor([&] {
    return !client_.keys.empty() && client_.keys.back().code == code && !client_.keys.back().down;
  })) << "the probe did not reach the client";
  client_.keys.resize(client_.keys.size() - 2);
  // The tap sees it too.
  ASSERT_TRUE(waitFor([&] {
    return !input_->eventTap().exists() ||
           (!input_.tapped.empty() && input_.tapped.back().keyCode == probe &&
            input_.tapped.back().type == EventTypeKeyUp);
  })) << "the tap did not see the probe";
  std::erase_if(input_.tapped, [](const TappedEvent& event) { return event.keyCode == probe; });
}

bool InputDesk::chordIsTaken(const std::vector<std::uint16_t>& modifiers, std::uint16_t keyCode) {
  // A window manager that has just begun may have moved the focus.
  client_.takeFocus();
  client_.keys.clear();
  for (const auto modifier : modifiers) client_.press(modifier);
  client_.tap(keyCode);
  for (const auto modifier : modifiers) client_.release(modifier);
  // Again and again, since while the keyboard is held for the chord it goes there, too.
  const auto got = [this](std::uint16_t key) {
    const auto code = *KeyCodeTable::xCodeFromKeyCode(key);
    return std::any_of(client_.keys.begin(), client_.keys.end(),
                       [code](const XClient::Key& each) { return each.code == code; });
  };
  const bool probed = waitFor([&] {
    if (!got(probe)) client_.tap(probe);
    return got(probe);
  });
  EXPECT_TRUE(probed) << "the probe did not reach the client";
  return !got(keyCode);
}

void InputDesk::superTabTap() {
  client_.press(KeyCodeLeftCommand);
  client_.press(KeyCodeTab);
  client_.release(KeyCodeTab);
  client_.release(KeyCodeLeftCommand);
}

bool InputDesk::keyboardComesBack() {
  const bool back = waitFor([&] { return client_.keyboardReturns > returnsSeen_; });
  returnsSeen_ = client_.keyboardReturns;
  return back && !client_.keyboardIsTaken;
}

std::string describe(const TappedEvent& event) {
  std::string text = event.type == EventTypeKeyDown ? "+"
                     : event.type == EventTypeKeyUp ? "-"
                                                    : "?";
  text += std::to_string(event.keyCode);
  if (event.flags & EventFlagControl) text += " control";
  if (event.flags & EventFlagOption) text += " option";
  if (event.flags & EventFlagCommand) text += " command";
  if (event.flags & EventFlagShift) text += " shift";
  if (event.flags & EventFlagCapsLock) text += " capslock";
  if (event.isRepeat) text += " repeat";
  return text;
}

std::vector<std::string> describe(const std::vector<TappedEvent>& events) {
  std::vector<std::string> texts;
  for (const TappedEvent& event : events) texts.push_back(describe(event));
  return texts;
}

}  // namespace qb::test
