#include "PlatformDesktop/DesktopPlatform.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "PlatformDesktop/dialogs/DialogColors.h"
#include "PlatformDesktop/graphics/DesktopIcons.h"

namespace qb {

namespace {

double greatestScale() {
  double scale = 1;
  for (const QScreen* screen : QGuiApplication::screens()) {
    scale = std::max(scale, screen->devicePixelRatio());
  }
  return scale;
}

/// The number of the X screen that Qt has opened.
int screenNumber(xcb_connection_t* connection) {
  char* host = nullptr;
  int display = 0, screen = 0;
  if (xcb_parse_display(nullptr, &host, &display, &screen)) std::free(host);
  return screen < xcb_setup_roots_length(xcb_get_setup(connection)) ? screen : 0;
}

void adoptColors(bool dark) { (dark ? DialogColors::dark() : DialogColors::light()).adopt(); }

}  // namespace

std::variant<std::unique_ptr<DesktopPlatform>, DesktopPlatformError> DesktopPlatform::create() {
  const auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr || x11->connection() == nullptr) {
    return DesktopPlatformError{"Quillbox needs an X11 display."};
  }
  const auto formats = ScreenFormats::query(x11->connection(), screenNumber(x11->connection()));
  if (!formats) {
    return DesktopPlatformError{
        "Quillbox needs an X server with the RENDER extension and translucent windows."};
  }
  std::unique_ptr<DesktopPlatform> platform(new DesktopPlatform(*formats));
  auto input = DesktopInput::create(platform->inputHost());
  if (const auto* error = std::get_if<InputError>(&input)) {
    return DesktopPlatformError{error->message};
  }
  platform->setInput(std::get<std::unique_ptr<DesktopInput>>(std::move(input)));
  return platform;
}

DesktopPlatform::DesktopPlatform(const ScreenFormats& formats)
    : runLoop_(std::make_unique<RunLoop>(runLoopHost_)),
      catalogue_(runLoopHost_),
      processes_(catalogue_, programWindows_),
      workspace_(processes_, catalogue_),
      graphics_(runLoopHost_, std::make_shared<DesktopIcons>(programWindows_), greatestScale()),
      windowPictures_(greatestScale()),
      windowServer_(formats, displays_, runLoopHost_),
      dialogs_(windowServer_, graphics_),
      menuPresenter_(windowServer_),
      applicationControl_(runLoopHost_),
      distributedNotifications_(sessionBus_),
      pasteboards_(fileSystem_),
      scripts_({applicationControl_, catalogue_, processes_, dialogs_}),
      sharedFileLists_(fileSystem_, processes_, catalogue_),
      sharing_(catalogue_),
      userDefaults_(fileSystem_),
      userNotifications_(sessionBus_, processes_) {
  runLoopHost_.setRunLoop(runLoop_.get());
  adoptColors(colorScheme_.isDark());
  colorScheme_.setObserver(adoptColors);
  applicationControl_.setApplicationOpener(
      [this](const std::string& path) { return openApplication(path); });
  applicationControl_.setDocumentOpener(
      [this](const std::string& path, const std::string& application) {
        return ScriptApplications(catalogue_, processes_).openDocument(path, {.name = application});
      });
  scripts_.setAfterPaste([this] { pasteboards_.finishPaste(); });
  catalogue_.setChangeObserver([this] {
    graphics_.forgetIcons();
    processes_.catalogueHasChanged();
  });
}

DesktopPlatform::~DesktopPlatform() {
  runLoopHost_.finishBackgroundWork();
  runLoopHost_.setWakeObserver({});
  beforeSleep_.cancel();
  windowServer_.setKeyObserver({});
  dialogs_.setObserver({});
  windowServer_.pointerInput().setTap({});
  windowServer_.pointerInput().setLeftControl({});
  processes_.setUserTime({});
  userDefaults_.setOnChange({});
  accessibilitySwitch_.setObserver({});
  scripts_.setTyper(nullptr);
  input_.reset();
  runLoopHost_.setRunLoop(nullptr);
  // What its work holds may still need the rest.
  runLoop_.reset();
}

DesktopInputHost DesktopPlatform::inputHost() {
  return {.wake = [this] { runLoopHost_.wakeUp(); },
          .currentMode = [this] { return runLoop_->currentMode(); },
          .pointerSpace = [this] { return pointerSpace(); },
          .isOwnWindow = [this](std::uint32_t id) { return windowServer_.isOwnWindow(id); },
          .isAllowed = [this] { return inputPermission_.isGranted(); },
          .deliverKey = [this](const TappedEvent& key) { deliverKey(key); }};
}

void DesktopPlatform::setInput(std::unique_ptr<DesktopInput> input) {
  input_ = std::move(input);
  input_->typer().setPerformLater(
      [](TimeInterval delay, Block block) { executeBlockAfterDelay(std::move(block), delay); });
  scripts_.setTyper(&input_->typer());
  runLoopHost_.setWakeObserver([this] { input_->drain(); });
  beforeSleep_ = runLoopHost_.addBeforeSleep([this] {
    // Events that a mode of the loop held back may be due in this one.
    input_->drain();
    processes_.update();
  });
  wasTrusted_ = input_->accessibility().isProcessTrusted();
  userDefaults_.setOnChange([this] { noteAccess(); });
  accessibilitySwitch_.setObserver([this] { noteAccess(); });
  processes_.setUserTime([this] { return input_->lastUserTime(); });
  windowServer_.setKeyObserver([this](bool) { noteKeyWindow(); });
  dialogs_.setObserver([this] {
    // Whoever has run it may be handling a press.
    input_->settlePress();
    // The key that has closed it is also seen on its way there, but by another thread: it must not
    // be heard of when the panel has the keys again.
    if (!dialogs_.isUp()) input_->catchUp();
    noteKeyWindow();
  });
  windowServer_.pointerInput().setTap(
      [this](const TappedEvent& event) { return input_->eventTap().tapPointerEvent(event); });
  windowServer_.pointerInput().setLeftControl(
      [this] { return input_->keyboard().controlIsTheLeftOne(); });
}

/// A program file is one only while it runs: opened as a file it may be a script to be read.
bool DesktopPlatform::openApplication(const std::string& path) {
  const auto running = processes_.running();
  const bool isRunning = std::any_of(running.begin(), running.end(), [&](const auto& number) {
    const auto information = processes_.processInformation(number);
    return information && information->bundlePath == path;
  });
  return (isRunning || path.ends_with(".desktop")) &&
         workspace_.launchApplicationAtPath(path, 0, {});
}

void DesktopPlatform::noteAccess() {
  const bool trusted = input_->accessibility().isProcessTrusted();
  if (trusted == wasTrusted_) return;
  wasTrusted_ = trusted;
  if (!trusted) {
    input_->eventTap().enable(false);
    input_->eventTap().stateChanged().signal();
  }
  input_->accessibility().trustChanged().signal();
}

void DesktopPlatform::noteKeyWindow() {
  const bool windowIsKey = windowServer_.keyWindow() != nullptr;
  processes_.setOwnWindowIsKey(windowIsKey || dialogs_.isUp());
  // A dialog has the server's own keyboard focus, which must not be kept from it; a recorder needs
  // the keys that the focus does not bring.
  input_->eventTap().setOwnWindowIsKey(dialogs_.isUp() ? dialogs_.listens() : windowIsKey);
}

void DesktopPlatform::deliverKey(const TappedEvent& key) {
  if (dialogs_.isUp()) {
    dialogs_.deliverKey(key);
  } else {
    windowServer_.deliverKey(key);
  }
}

PointerSpace DesktopPlatform::pointerSpace() const {
  const auto& displays = displays_.map().displays();
  if (displays.empty()) return {};
  const DisplayMap::Display& primary = displays.front();
  return {.primary = Rect::make(primary.pixels.x, primary.pixels.y, primary.pixels.width,
                                primary.pixels.height),
          .scale = primary.scale};
}

}  // namespace qb
