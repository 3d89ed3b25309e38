#include "PlatformDesktop/windows/DesktopWindowServer.h"

#include <xcb/xfixes.h>

#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <string>

#include "QuillboxCommon/ModalSession.h"

namespace qb {

namespace {

// What these levels are elsewhere; only their order means anything here.
constexpr std::int64_t floatingLevel = 3;
constexpr std::int64_t dialogLevel = 8;
constexpr std::int64_t screenSaverLevel = 1000;

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};

xcb_atom_t internAtom(xcb_connection_t* connection, const std::string& name) {
  const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(
      connection,
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
      nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

int screenNumberOf(xcb_connection_t* connection, xcb_window_t root) {
  int number = 0;
  for (auto each = xcb_setup_roots_iterator(xcb_get_setup(connection)); each.rem > 0;
       xcb_screen_next(&each), ++number) {
    if (each.data->root == root) return number;
  }
  return 0;
}

}  // namespace

DesktopWindowServer::DesktopWindowServer(const ScreenFormats& formats, DesktopDisplays& displays,
                                         QtRunLoopHost& host)
    : formats_(formats), displays_(displays), pointerInput_(displays) {
  catcher_ = std::make_unique<ClickCatcher>(formats_.connection, formats_.root,
                                            [this](const PixelEvent& event) {
                                              const auto processed = pointerInput_.process(event);
                                              // Qt keeps presses from what a dialog stands before,
                                              // but does not know this window.
                                              if (ModalSession::current()) return;
                                              if (processed && keyWindow_) {
                                                keyWindow_->deliver(*processed);
                                              }
                                            });
  blurProperty_ = internAtom(formats_.connection, "_KDE_NET_WM_BLUR_BEHIND_REGION");
  windowTypeProperty_ = internAtom(formats_.connection, "_NET_WM_WINDOW_TYPE");
  dockType_ = internAtom(formats_.connection, "_NET_WM_WINDOW_TYPE_DOCK");
  watchCompositor();
  qApp->installNativeEventFilter(this);
  beforeSleep_ = host.addBeforeSleep([this] { update(); });
  reconfiguration_ = displays_.registerReconfigurationCallback([this] {
    for (DesktopWindow* window : windows_) window->environmentChanged();
  });
}

DesktopWindowServer::~DesktopWindowServer() {
  if (qApp) qApp->removeNativeEventFilter(this);
}

std::unique_ptr<WindowPeer> DesktopWindowServer::createWindowPeer(WindowPeerClient& client) {
  return std::make_unique<DesktopWindow>(*this, client);
}

std::int64_t DesktopWindowServer::windowLevelForKey(WindowLevelKey key) const {
  return key == WindowLevelKeyScreenSaver ? screenSaverLevel : floatingLevel;
}

void DesktopWindowServer::add(DesktopWindow& window) { windows_.push_back(&window); }

void DesktopWindowServer::remove(DesktopWindow& window) { std::erase(windows_, &window); }

bool DesktopWindowServer::isOwnWindow(xcb_window_t id) const {
  // By its number, since it may have gone: a press on a menu is heard of after it has closed the
  // menu when the loop has much to do.
  const xcb_setup_t* const setup = xcb_get_setup(formats_.connection);
  return (id & ~setup->resource_id_mask) == setup->resource_id_base;
}

void DesktopWindowServer::deliverKey(const TappedEvent& key) {
  if (keyWindow_ == nullptr) return;
  Event event;
  event.type = key.type;
  event.flags = key.flags;
  event.keyCode = key.keyCode;
  event.isRepeat = key.isRepeat;
  keyWindow_->deliverKey(event);
}

void DesktopWindowServer::setKeyWindow(DesktopWindow* window) {
  if (window == keyWindow_) return;
  const bool wasKey = keyWindow_ != nullptr;
  keyWindow_ = window;
  catcher_->setUp(window != nullptr);
  if (window != nullptr) restack();
  xcb_flush(formats_.connection);
  if (keyObserver_ && wasKey != (window != nullptr)) keyObserver_(window != nullptr);
}

void DesktopWindowServer::restack(DesktopWindow* arriving) {
  std::vector<DesktopWindow*> shown;
  for (DesktopWindow* window : windows_) {
    if (window != arriving && window->isShown()) shown.push_back(window);
  }
  if (arriving != nullptr) shown.push_back(arriving);
  std::stable_sort(shown.begin(), shown.end(), [](const DesktopWindow* a, const DesktopWindow* b) {
    return a->level() < b->level();
  });
  if (catcher_->isUp()) catcher_->raise();
  const auto aboveDialogs = std::find_if(
      shown.begin(), shown.end(), [](const auto* window) { return window->level() > dialogLevel; });
  std::for_each(shown.begin(), aboveDialogs, [](DesktopWindow* window) { window->raise(); });
  if (dialogRaiser_) dialogRaiser_();
  std::for_each(aboveDialogs, shown.end(), [](DesktopWindow* window) { window->raise(); });
  if (restackObserver_) restackObserver_();
}

void DesktopWindowServer::update() {
  if (!updateNeeded_) return;
  updateNeeded_ = false;
  for (DesktopWindow* window : std::vector(windows_)) window->update();
  xcb_flush(formats_.connection);
}

void DesktopWindowServer::watchCompositor() {
  xcb_connection_t* const c = formats_.connection;
  compositorSelection_ =
      internAtom(c, "_NET_WM_CM_S" + std::to_string(screenNumberOf(c, formats_.root)));
  const xcb_query_extension_reply_t* const xfixes = xcb_get_extension_data(c, &xcb_xfixes_id);
  if (xfixes != nullptr && xfixes->present) {
    xfixesEvent_ = xfixes->first_event;
    xcb_discard_reply(c, xcb_xfixes_query_version(c, 5, 0).sequence);
    xcb_xfixes_select_selection_input(c, formats_.root, compositorSelection_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  }
  const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
      xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, compositorSelection_), nullptr));
  compositorIsRunning_ = owner && owner->owner != XCB_NONE;
}

bool DesktopWindowServer::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (type != "xcb_generic_event_t") return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if (catcher_->handleEvent(event)) return true;
  if (xfixesEvent_ != 0 &&
      (event.response_type & 0x7f) == xfixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
    const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notice.selection == compositorSelection_) {
      compositorIsRunning_ = notice.owner != XCB_NONE;
      for (DesktopWindow* window : windows_) window->environmentChanged();
    }
  }
  return false;
}

}  // namespace qb
