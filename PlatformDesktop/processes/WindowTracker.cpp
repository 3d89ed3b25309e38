#include "PlatformDesktop/processes/WindowTracker.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace qb {

namespace {

constexpr std::uint32_t iconicState = 3;
constexpr std::uint32_t everyDesktop = 0xffffffff;
/// The message comes from a pager: from a user's own wish.
constexpr std::uint32_t sourcePager = 2;

std::string thisHost() {
  std::array<char, 256> name{};
  gethostname(name.data(), name.size() - 1);
  return name.data();
}

bool containsAny(const std::vector<std::uint32_t>& values, const std::vector<xcb_atom_t>& wanted) {
  return std::any_of(values.begin(), values.end(), [&](std::uint32_t value) {
    return std::find(wanted.begin(), wanted.end(), value) != wanted.end();
  });
}

}  // namespace

WindowTracker::Atoms::Atoms(const XConnection& x)
    : clientList(x.atom("_NET_CLIENT_LIST")),
      clientListStacking(x.atom("_NET_CLIENT_LIST_STACKING")),
      activeWindow(x.atom("_NET_ACTIVE_WINDOW")),
      supportingWmCheck(x.atom("_NET_SUPPORTING_WM_CHECK")),
      wmPid(x.atom("_NET_WM_PID")),
      wmWindowType(x.atom("_NET_WM_WINDOW_TYPE")),
      wmState(x.atom("_NET_WM_STATE")),
      skipTaskbar(x.atom("_NET_WM_STATE_SKIP_TASKBAR")),
      icccmState(x.atom("WM_STATE")),
      changeState(x.atom("WM_CHANGE_STATE")),
      protocols(x.atom("WM_PROTOCOLS")),
      deleteWindow(x.atom("WM_DELETE_WINDOW")),
      clientLeader(x.atom("WM_CLIENT_LEADER")),
      clientMachine(x.atom("WM_CLIENT_MACHINE")),
      wmDesktop(x.atom("_NET_WM_DESKTOP")),
      currentDesktop(x.atom("_NET_CURRENT_DESKTOP")),
      restackWindow(x.atom("_NET_RESTACK_WINDOW")) {
  for (const char* type : {"NORMAL", "DIALOG", "UTILITY"}) {
    ordinaryTypes.push_back(x.atom(std::string("_NET_WM_WINDOW_TYPE_") + type));
  }
  for (const char* type : {"DESKTOP", "DOCK", "TOOLBAR", "MENU", "SPLASH", "DROPDOWN_MENU",
                           "POPUP_MENU", "TOOLTIP", "NOTIFICATION", "COMBO", "DND"}) {
    auxiliaryTypes.push_back(x.atom(std::string("_NET_WM_WINDOW_TYPE_") + type));
  }
}

WindowTracker::WindowTracker() : atoms_(x_), hostName_(thisHost()) { update(); }

bool WindowTracker::update() {
  const std::vector<ManagedWindow> windowsBefore = windows_;
  const xcb_window_t activeBefore = active_;
  takeEvents(xcb_poll_for_event);
  while (x_.isUsable() && (managerChanged_ || windowsChanged_ || activeChanged_)) {
    if (managerChanged_) checkWindowManager();
    if (windowsChanged_) readWindows();
    if (activeChanged_) readActiveWindow();
    // Events that came with the answers wait in the queue, and the socket would not tell of them.
    takeEvents(xcb_poll_for_queued_event);
  }
  const auto alike = [](const ManagedWindow& a, const ManagedWindow& b) {
    return a.id == b.id && a.isOrdinary == b.isOrdinary;
  };
  return active_ != activeBefore || !std::equal(windows_.begin(), windows_.end(),
                                                windowsBefore.begin(), windowsBefore.end(), alike);
}

void WindowTracker::takeEvents(xcb_generic_event_t* (*poll)(xcb_connection_t*)) {
  while (const XReply<xcb_generic_event_t> event{poll(x_.get())}) handle(*event);
}

void WindowTracker::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
      const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (notice.atom == atoms_.clientList || notice.atom == atoms_.clientListStacking) {
        windowsChanged_ = true;
      }
      if (notice.atom == atoms_.activeWindow) activeChanged_ = true;
      if (notice.atom == atoms_.supportingWmCheck) managerChanged_ = true;
      break;
    }
    case XCB_DESTROY_NOTIFY: {
      const auto& notice = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
      if (notice.window == windowManager_) managerChanged_ = true;
      windowsChanged_ = true;
      break;
    }
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
      windowsChanged_ = true;
      break;
    default:
      break;
  }
}

void WindowTracker::checkWindowManager() {
  managerChanged_ = false;
  windowManager_ = 0;
  const auto named = x_.numbers(x_.root(), atoms_.supportingWmCheck);
  if (!named.empty()) {
    // One that was killed leaves its mark on the root, but not its window.
    const std::uint32_t watch = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(x_.get(), named[0], XCB_CW_EVENT_MASK, &watch);
    if (x_.numbers(named[0], atoms_.supportingWmCheck) == named) windowManager_ = named[0];
  }
  // Windows that come and go without a manager's lists are told one by one.
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE |
                             (windowManager_ == 0 ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY : 0);
  xcb_change_window_attributes(x_.get(), x_.root(), XCB_CW_EVENT_MASK, &mask);
  x_.flush();
  windowsChanged_ = activeChanged_ = true;
}

std::vector<xcb_window_t> WindowTracker::windowsOnRoot() const {
  const XReply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(x_.get(), xcb_query_tree(x_.get(), x_.root()), nullptr));
  if (!tree) return {};
  const xcb_window_t* const children = xcb_query_tree_children(tree.get());
  const int count = xcb_query_tree_children_length(tree.get());
  std::vector<xcb_get_window_attributes_cookie_t> cookies;
  for (int i = 0; i < count; ++i) {
    cookies.push_back(xcb_get_window_attributes(x_.get(), children[i]));
  }
  std::vector<xcb_window_t> result;
  for (int i = 0; i < count; ++i) {
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x_.get(), cookies[static_cast<std::size_t>(i)], nullptr));
    if (attributes && !attributes->override_redirect &&
        attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT &&
        attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
      result.push_back(children[i]);
    }
  }
  return result;
}

struct WindowTracker::Pending {
  xcb_window_t id;
  xcb_get_property_cookie_t pid, windowClass, type, state, leader, machine;
};

WindowTracker::Pending WindowTracker::ask(xcb_window_t id) const {
  return {id,
          x_.ask(id, atoms_.wmPid),
          x_.ask(id, XCB_ATOM_WM_CLASS),
          x_.ask(id, atoms_.wmWindowType),
          x_.ask(id, atoms_.wmState),
          x_.ask(id, atoms_.clientLeader),
          x_.ask(id, atoms_.clientMachine)};
}

ManagedWindow WindowTracker::read(const Pending& pending) const {
  ManagedWindow window;
  window.id = pending.id;
  const auto pid = x_.readNumbers(pending.pid);
  const std::string names = x_.readText(pending.windowClass);
  const auto types = x_.readNumbers(pending.type);
  const auto states = x_.readNumbers(pending.state);
  const auto leader = x_.readNumbers(pending.leader);
  std::string machine = x_.readText(pending.machine);
  machine.resize(std::min(machine.size(), machine.find('\0')));

  const bool isHere = machine.empty() || machine == hostName_ || machine == "localhost";
  if (!pid.empty() && isHere && pid[0] != 0 &&
      std::filesystem::exists("/proc/" + std::to_string(pid[0]))) {
    window.pid = static_cast<std::int32_t>(pid[0]);
  }
  window.leader = leader.empty() || leader[0] == 0 ? pending.id : leader[0];
  const std::size_t end = std::min(names.size(), names.find('\0'));
  window.instanceName = names.substr(0, end);
  if (end < names.size()) {
    window.className = names.substr(end + 1, names.find('\0', end + 1) - end - 1);
  }
  window.isOrdinary = isOrdinary(types, states);
  return window;
}

bool WindowTracker::isOrdinary(const std::vector<std::uint32_t>& types,
                               const std::vector<std::uint32_t>& states) const {
  if (containsAny(states, {atoms_.skipTaskbar})) return false;
  // The first type known to us counts.
  for (const std::uint32_t type : types) {
    if (containsAny({type}, atoms_.ordinaryTypes)) return true;
    if (containsAny({type}, atoms_.auxiliaryTypes)) return false;
  }
  return true;
}

void WindowTracker::readWindows() {
  windowsChanged_ = false;
  std::vector<xcb_window_t> ids;
  if (windowManager_ != 0) {
    const auto list = x_.ask(x_.root(), atoms_.clientList, 4096);
    const auto stacking = x_.ask(x_.root(), atoms_.clientListStacking, 4096);
    ids = x_.readNumbers(list);
    stacking_ = x_.readNumbers(stacking);
    if (stacking_.size() != ids.size()) stacking_ = ids;
  } else {
    stacking_ = windowsOnRoot();
    // Those known keep their places, whatever is in front.
    for (const ManagedWindow& known : windows_) {
      if (std::find(stacking_.begin(), stacking_.end(), known.id) != stacking_.end()) {
        ids.push_back(known.id);
      }
    }
    for (const xcb_window_t id : stacking_) {
      if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
    }
  }
  std::vector<Pending> pending;
  for (const xcb_window_t id : ids) pending.push_back(ask(id));
  windows_.clear();
  for (const Pending& each : pending) windows_.push_back(read(each));
}

void WindowTracker::readActiveWindow() {
  activeChanged_ = false;
  active_ = 0;
  if (windowManager_ != 0) {
    const auto active = x_.numbers(x_.root(), atoms_.activeWindow);
    if (!active.empty()) active_ = active[0];
    return;
  }
  const XReply<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(x_.get(), xcb_get_input_focus(x_.get()), nullptr));
  xcb_window_t found = focus ? focus->focus : static_cast<xcb_window_t>(XCB_NONE);
  // The keyboard may be with a window inside the program's own.
  while (found > XCB_INPUT_FOCUS_POINTER_ROOT && found != x_.root()) {
    if (window(found) != nullptr) {
      active_ = found;
      return;
    }
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x_.get(), xcb_query_tree(x_.get(), found), nullptr));
    found = tree ? tree->parent : static_cast<xcb_window_t>(XCB_NONE);
  }
}

xcb_window_t WindowTracker::activeWindow() {
  if (windowManager_ == 0) readActiveWindow();
  return active_;
}

const ManagedWindow* WindowTracker::window(xcb_window_t id) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [id](const ManagedWindow& window) { return window.id == id; });
  return found == windows_.end() ? nullptr : &*found;
}

bool WindowTracker::isIconic(xcb_window_t window) const {
  const auto state = x_.numbers(window, atoms_.icccmState);
  return !state.empty() && state[0] == iconicState;
}

bool WindowTracker::isOnCurrentDesktop(xcb_window_t window) const {
  const auto desktop = x_.numbers(window, atoms_.wmDesktop);
  const auto current = x_.numbers(x_.root(), atoms_.currentDesktop);
  return desktop.empty() || current.empty() || desktop[0] == everyDesktop ||
         desktop[0] == current[0];
}

bool WindowTracker::canBeClosed(xcb_window_t window) const {
  return containsAny(x_.numbers(window, atoms_.protocols), {atoms_.deleteWindow});
}

void WindowTracker::activate(xcb_window_t window, std::uint32_t time) {
  if (windowManager_ != 0) {
    x_.sendToWindowManager(window, atoms_.activeWindow, {sourcePager, time, active_});
  } else {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_map_window(x_.get(), window);
    xcb_configure_window(x_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  }
  x_.flush();
}

void WindowTracker::raiseBelow(xcb_window_t window, xcb_window_t sibling) {
  if (windowManager_ == 0) return;
  x_.sendToWindowManager(window, atoms_.restackWindow,
                         {sourcePager, sibling, XCB_STACK_MODE_BELOW});
}

void WindowTracker::iconify(xcb_window_t window) {
  if (windowManager_ != 0) {
    x_.sendToWindowManager(window, atoms_.changeState, {iconicState});
  } else {
    xcb_unmap_window(x_.get(), window);
  }
  x_.flush();
}

void WindowTracker::deiconify(xcb_window_t window) {
  xcb_map_window(x_.get(), window);
  x_.flush();
}

void WindowTracker::close(xcb_window_t window, std::uint32_t time) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = atoms_.protocols;
  event.data.data32[0] = atoms_.deleteWindow;
  event.data.data32[1] = time;
  xcb_send_event(x_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&event));
  x_.flush();
}

}  // namespace qb
