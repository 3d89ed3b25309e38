#include "PlatformDesktop/scripting/AccessibleMenus.h"

#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

namespace {

/// How long an opened menu may take to show, and a closed one to go.
constexpr TimeInterval menuPatience = 0.5;
/// A window is looked through so deep and so far.
constexpr int deepestMenuBar = 12;
constexpr std::size_t mostObjects = 2000;

// What AT-SPI calls things, and how they are.
enum Role : std::uint32_t {
  RoleCheckMenuItem = 8,
  RoleList = 31,
  RoleMenu = 33,
  RoleMenuBar = 34,
  RoleMenuItem = 35,
  RolePopUpMenu = 41,
  RoleTable = 55,
  RoleText = 61,
  RoleTree = 65,
  RoleTreeTable = 66,
  RoleParagraph = 73,
  RoleDocumentFrame = 82,
  RoleDocumentWeb = 95,
};
constexpr std::uint64_t stateActive = std::uint64_t{1} << 1;
constexpr std::uint64_t stateSensitive = std::uint64_t{1} << 24;
constexpr std::uint64_t stateShowing = std::uint64_t{1} << 25;

/// What holds much, but no menu bar.
bool mayHoldMenuBar(std::uint32_t role) {
  static constexpr Role others[] = {RoleCheckMenuItem, RoleList,          RoleMenu,
                                    RoleMenuItem,      RolePopUpMenu,     RoleTable,
                                    RoleText,          RoleTree,          RoleTreeTable,
                                    RoleParagraph,     RoleDocumentFrame, RoleDocumentWeb};
  return std::find(std::begin(others), std::end(others), role) == std::end(others);
}

bool isShowing(const AccessibilityBus::Description& description) {
  return (description.states & stateShowing) != 0;
}

/// Whether it is the menu of an entry, and not an entry in it.
bool isMenuItself(const AccessibilityBus::Description& description) {
  return description.role == RolePopUpMenu ||
         (description.role == RoleMenu && description.name.isEmpty());
}

/// Some programs append the shortcut.
std::string shownName(const QString& name) {
  return name.section(u'\t', 0, 0).trimmed().toStdString();
}

template <class Condition>
void waitUntil(const Condition& holds) {
  const Deadline deadline(menuPatience);
  while (!holds() && !deadline.hasPassed()) Deadline::rest();
}

}  // namespace

/// An entry that holds on to what lies above it. A menu that was opened for it goes with it.
struct AccessibleMenus::Node {
  Node(AccessibleMenus& itsMenus, AccessibilityBus::Description itself,
       std::shared_ptr<Node> itsParent)
      : menus(itsMenus), description(std::move(itself)), parent(std::move(itsParent)) {}
  ~Node() {
    if (!wasOpened) return;
    try {
      menus.close(*this);
    } catch (const ScriptError&) {
      // Of a program that does not answer nothing can be closed.
    }
  }
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;

  AccessibleMenus& menus;
  AccessibilityBus::Description description;
  /// Null for an entry of the menu bar.
  std::shared_ptr<Node> parent;
  bool wasOpened = false;
};

class AccessibleMenus::Entry : public ScriptMenuEntry {
 public:
  Entry(AccessibleMenus& menus, std::shared_ptr<Node> node)
      : menus_(menus), node_(std::move(node)) {}

  std::string name() const override { return shownName(node_->description.name); }
  bool isEnabled() const override { return (node_->description.states & stateSensitive) != 0; }
  ScriptMenuEntries entries() override {
    return menus_.asked(
        [&] { return menus_.entriesFrom(menus_.contentOf(*node_).entries, node_); });
  }
  ScriptMenuEntries entriesOnceOpened() override {
    return menus_.asked([&] { return menus_.entriesFrom(menus_.open(*node_).entries, node_); });
  }
  bool click() override {
    return menus_.asked(
        [&] { return menus_.bus_->act(node_->description.object, menus_.deadline_); });
  }

 private:
  AccessibleMenus& menus_;
  std::shared_ptr<Node> node_;
};

template <class Call>
auto AccessibleMenus::asked(Call call) -> decltype(call()) {
  try {
    return call();
  } catch (const ScriptError& error) {
    if (error.number == ScriptErrorTimeout) hanging_.insert(pid_);
    throw;
  }
}

bool AccessibleMenus::isRunning(const ScriptApplication& process) {
  return !applications_.running(process).isNull();
}

std::optional<ScriptMenuEntries> AccessibleMenus::menuBarOf(const ScriptApplication& process) {
  deadline_ = Deadline(applications_.patience().withRunning);
  pid_ = static_cast<std::int32_t>(applications_.running(process).lowLongOfPSN);
  // This program cannot answer while it waits for an answer; it has no menu bar either.
  if (pid_ == 0 || pid_ == getpid()) return std::nullopt;
  if (hanging_.contains(pid_)) throw ScriptError{ScriptErrorTimeout, "AppleEvent timed out.", ""};
  connect();
  return asked([&]() -> std::optional<ScriptMenuEntries> {
    // One that has just been started may not have come as far as that.
    const Deadline appearance(applications_.patience().withMenus);
    for (;;) {
      if (const auto bar = findMenuBar(pid_)) return entriesFrom(childrenOf({*bar}), nullptr);
      if (appearance.hasPassed()) return std::nullopt;
      Deadline::rest();
    }
  });
}

void AccessibleMenus::connect() {
  if (failure_) throw ScriptError(*failure_);
  if (bus_) return;
  try {
    bus_ = AccessibilityBus::connect(SessionBus::addressOfSession(), deadline_);
  } catch (const ScriptError& error) {
    failure_ = error;
    throw;
  }
}

std::optional<AccessibleObject> AccessibleMenus::findMenuBar(std::int32_t pid) const {
  Descriptions windows = childrenOf(bus_->programsOf(pid, deadline_));
  std::stable_partition(windows.begin(), windows.end(),
                        [](const auto& window) { return (window.states & stateActive) != 0; });
  for (const auto& window : windows) {
    if (auto bar = findMenuBarIn(window.object)) return bar;
  }
  return std::nullopt;
}

/// Level by level: menu bars lie near the top, and each level takes one round of questions.
std::optional<AccessibleObject> AccessibleMenus::findMenuBarIn(
    const AccessibleObject& window) const {
  Objects level{window};
  std::size_t seen = 0;
  for (int depth = 0; depth < deepestMenuBar && !level.empty() && seen < mostObjects; ++depth) {
    const Descriptions children = childrenOf(level);
    seen += children.size();
    level.clear();
    for (const auto& child : children) {
      if (child.role == RoleMenuBar) return child.object;
      if (mayHoldMenuBar(child.role)) level.push_back(child.object);
    }
  }
  return std::nullopt;
}

AccessibleMenus::Descriptions AccessibleMenus::childrenOf(const Objects& objects) const {
  Objects all;
  for (auto& children : bus_->childrenOf(objects, deadline_)) {
    std::move(children.begin(), children.end(), std::back_inserter(all));
  }
  return bus_->describe(all, deadline_);
}

AccessibleMenus::Content AccessibleMenus::contentOf(const Node& node) const {
  Content content{childrenOf({node.description.object})};
  if (content.entries.size() == 1 && isMenuItself(content.entries.front())) {
    const AccessibilityBus::Description menu = content.entries.front();
    return {childrenOf({menu.object}), true, isShowing(menu)};
  }
  content.isShowing = std::any_of(content.entries.begin(), content.entries.end(), isShowing);
  return content;
}

AccessibleMenus::Content AccessibleMenus::open(Node& node) const {
  if (node.parent) open(*node.parent);
  Content content = contentOf(node);
  if (content.isShowing) return content;
  node.wasOpened = bus_->act(node.description.object, deadline_);
  waitUntil([&] {
    content = contentOf(node);
    return content.isShowing && !content.entries.empty();
  });
  return content;
}

/// A program that closes its menus after a click by itself does so a moment later. Escape that came
/// after that would go to whatever the click has brought up.
void AccessibleMenus::close(const Node& node) const {
  Content content = contentOf(node);
  if (content.isShowing && content.isOnItsOwn) {
    bus_->act(node.description.object, deadline_);
    return;
  }
  waitUntil([&] {
    content = contentOf(node);
    return !content.isShowing;
  });
  if (content.isShowing) pressEscape_();
}

ScriptMenuEntries AccessibleMenus::entriesFrom(Descriptions descriptions,
                                               const std::shared_ptr<Node>& parent) {
  ScriptMenuEntries entries;
  for (auto& description : descriptions) {
    entries.push_back(std::make_unique<Entry>(
        *this, std::make_shared<Node>(*this, std::move(description), parent)));
  }
  return entries;
}

}  // namespace qb
