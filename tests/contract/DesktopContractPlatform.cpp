#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <xkbcommon/xkbcommon.h>

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "ContractPlatform.h"
#include "Platform/HotKeys.h"
#include "PlatformDesktop/DesktopPlatform.h"
#include "PlatformDesktop/graphics/DesktopImage.h"
#include "PlatformDesktop/input/KeyCodeTable.h"
#include "XClient.h"
#include "XServer.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr TimeInterval longestWait = 60;
constexpr TimeInterval lookInterval = 0.01;
constexpr const char* clientClass = "ContractClient";
/// What the client is told: class, place, size, colour, and to tell what is typed.
constexpr const char* clientArguments = "ContractClient 200 150 300 200 808080 text";
/// After a chord the keyboard is kept for a moment in which the panel may come up, two seconds at
/// most, and for good when the rules say so. Hands are slower than that moment.
constexpr TimeInterval pauseBetweenKeys = 2.5;

std::string fileContents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The X server, its window manager, the home and Qt, which a process has once. Made by the first
/// test that needs it.
class Desk {
 public:
  static Desk& instance() {
    if (!desk_) desk_.reset(new Desk);
    return *desk_;
  }
  /// Qt has to end before the statics do that it has made since.
  static void end() { desk_.reset(); }

  ~Desk() {
    bus_.kill();
    bus_.waitForFinished();
  }

  const std::string& display() const { return server_.display(); }
  std::string folder(const std::string& name) const {
    const std::string path = home_.path().toStdString() + '/' + name;
    fs::create_directories(path);
    return path;
  }
  std::string clientPath() const {
    return folder(".local/share/applications") + "/org.contract.client.desktop";
  }

 private:
  Desk() {
    setenv("DISPLAY", display().c_str(), 1);
    setenv("HOME", home_.path().toUtf8().constData(), 1);
    setenv("XDG_RUNTIME_DIR", home_.path().toUtf8().constData(), 1);
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "DBUS_SESSION_BUS_ADDRESS"}) {
      unsetenv(name);
    }
    setenv("QT_NO_GLIB", "1", 1);
    std::ofstream(clientPath()) << "[Desktop Entry]\nType=Application\nName=Client\nExec="
                                << CONTRACT_CLIENT << ' ' << clientArguments
                                << "\nStartupWMClass=" << clientClass << "\n";
    std::ofstream(folder(".local/share/applications") + "/org.contract.menus.desktop")
        << "[Desktop Entry]\nType=Application\nName=Menus\nExec=" << CONTRACT_MENU_CLIENT
        << "\nStartupWMClass=Qtmenus\n";
    // As where the desktop's switch for assistive technologies is on when programs start.
    setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 1);
    manager_ = test::startWindowManager(display(), test::WindowManagerKeys::None);
    static int argumentCount = 1;
    static char name[] = "contract";
    static char* arguments[] = {name, nullptr};
    application_ = std::make_unique<QApplication>(argumentCount, arguments);
    std::setlocale(LC_NUMERIC, "C");
    signal(SIGXFSZ, SIG_IGN);
    startBus();
  }

  /// A session bus of this process's own.
  void startBus() {
    bus_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
    if (!bus_.waitForStarted() || !bus_.waitForReadyRead()) return;
    setenv("DBUS_SESSION_BUS_ADDRESS", bus_.readLine().trimmed().constData(), 1);
  }

  QTemporaryDir home_;
  test::XServer server_{{"-screen", "0", "1280x800x24"}};
  test::Program manager_;
  std::unique_ptr<QApplication> application_;
  QProcess bus_;

  static inline std::unique_ptr<Desk> desk_;
};

class DeskEnvironment : public testing::Environment {
 public:
  void TearDown() override { Desk::end(); }
};

// googletest owns what it is given.
[[maybe_unused]] const testing::Environment* const deskEnvironment =
    testing::AddGlobalTestEnvironment(new DeskEnvironment);

/// One running instance of the client and what it has written down.
class Client {
 public:
  Client() : Client(CONTRACT_CLIENT, QString(clientArguments).split(' ')) {}
  Client(const QString& program, const QStringList& arguments) {
    process_.start(program, arguments);
    process_.waitForStarted();
  }
  ~Client() {
    process_.kill();
    process_.waitForFinished();
  }

  std::int32_t pid() const { return static_cast<std::int32_t>(process_.processId()); }
  std::string text() {
    received_ += process_.readAllStandardOutput();
    constexpr const char* beginning = "types ";
    std::string all;
    for (const QByteArray& line : received_.split('\n')) {
      if (line.startsWith(beginning)) all += line.mid(qstrlen(beginning)).toStdString();
    }
    return all;
  }
  int count(const std::string& line) {
    received_ += process_.readAllStandardOutput();
    return static_cast<int>(received_.split('\n').count(QByteArray::fromStdString(line)));
  }

 private:
  QProcess process_;
  QByteArray received_;
};

class DesktopContractPlatform : public ContractPlatform {
 public:
  DesktopContractPlatform() : hands_(Desk::instance().display()) {
    fs::remove_all(folder());
    // What the platform has kept of the tests before.
    fs::remove_all(Desk::instance().folder(".local/share/Quillbox"));
    auto created = DesktopPlatform::create();
    platform_ = std::get<std::unique_ptr<DesktopPlatform>>(std::move(created));
    movePointer({1, 1});
  }

  ~DesktopContractPlatform() override {
    clients_.clear();
    endClipboardOwner();
    // Those that the platform itself has launched.
    for (const auto& launched :
         platform_->workspace().runningApplicationsWithBundleIdentifier(clientBundleIdentifier())) {
      launched->forceTerminate();
    }
    waitUntil([&] { return platform_->processes().running().empty(); });
  }

  Platform& platform() override { return *platform_; }
  std::string clientPath() override { return Desk::instance().clientPath(); }
  std::string clientBundleIdentifier() override { return "org.contract.client"; }

  ProcessSerialNumber startClient() override { return adopt(std::make_unique<Client>()); }
  void stopClient(ProcessSerialNumber client) override {
    clients_.erase(client.lowLongOfPSN);
    waitUntil([&] { return !platform_->processes().processInformation(client); });
  }
  void bringClientToFront(ProcessSerialNumber client) override {
    WindowTracker tracker;
    tracker.activate(windowOf(tracker, client), XCB_CURRENT_TIME);
    waitUntil([&] { return platform_->processes().getFrontProcess() == client; });
  }
  Rect clientWindowFrame(ProcessSerialNumber client) override {
    WindowTracker tracker;
    xcb_connection_t* const x = tracker.connection().get();
    const xcb_window_t window = windowOf(tracker, client);
    const XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr));
    const XReply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        x, xcb_translate_coordinates(x, window, tracker.connection().root(), 0, 0), nullptr));
    if (!size || !place) return {};
    const double height = platform_->displays().screens().front().frame.height();
    return Rect::make(place->dst_x, height - place->dst_y - size->height, size->width,
                      size->height);
  }

  WindowID clientWindow(ProcessSerialNumber client) override {
    return windowOf(WindowTracker(), client);
  }
  Color clientColor() override { return colorOf(QColor(0x80, 0x80, 0x80)); }
  std::optional<Color> colorInMiddle(const Image& image) override {
    const auto source = std::dynamic_pointer_cast<const DesktopImage>(image.source());
    if (!source) return std::nullopt;
    const QImage pixels = source->scaled(QSize(11, 11));
    return colorOf(pixels.pixelColor(pixels.rect().center()));
  }

  ClientCounts keysReceived(ProcessSerialNumber client, std::uint16_t keyCode) override {
    Client& received = *clients_.at(client.lowLongOfPSN);
    const std::string name = keyName(keyCode);
    return {received.count("press " + name), received.count("release " + name)};
  }
  std::string textReceived(ProcessSerialNumber client) override {
    return clients_.at(client.lowLongOfPSN)->text();
  }
  int pressesReceived(ProcessSerialNumber client) override {
    return clients_.at(client.lowLongOfPSN)->count("button 1");
  }

  ProcessSerialNumber startMenuClient() override {
    return menuClient_ = adopt(std::make_unique<Client>(CONTRACT_MENU_CLIENT, QStringList()));
  }
  bool menuClientHasZoomed() override {
    return clients_.at(menuClient_.lowLongOfPSN)->count("chose 200 %") > 0;
  }

  void takeHotKeyElsewhere(std::uint16_t keyCode, std::uint32_t modifiers) override {
    std::uint16_t mask = 0;
    if (modifiers & HotKeyModifierCommand) mask |= XCB_MOD_MASK_4;
    if (modifiers & HotKeyModifierShift) mask |= XCB_MOD_MASK_SHIFT;
    if (modifiers & HotKeyModifierOption) mask |= XCB_MOD_MASK_1;
    if (modifiers & HotKeyModifierControl) mask |= XCB_MOD_MASK_CONTROL;
    hands_.grabKey(keyCode, mask);
  }

  void pressKey(std::uint16_t keyCode) override {
    if (keysDown_++ == 0) {
      waitUntil([&] { return platform_->runLoop().now() >= nextPress_ || keyboardIsFree(); });
    }
    hands_.press(keyCode);
  }
  void releaseKey(std::uint16_t keyCode) override {
    --keysDown_;
    hands_.release(keyCode);
    nextPress_ = platform_->runLoop().now() + pauseBetweenKeys;
  }
  // The server repeats by itself.
  void repeatKey(std::uint16_t) override {}
  void movePointer(Point point) override {
    const double height = platform_->displays().screens().front().frame.height();
    hands_.movePointer(static_cast<int>(point.x), static_cast<int>(height - point.y));
  }
  void pressButton(int button) override { hands_.button(button == 0 ? 1 : 3, true); }
  void releaseButton(int button) override { hands_.button(button == 0 ? 1 : 3, false); }
  void scrollUp() override {
    hands_.button(4, true);
    hands_.button(4, false);
  }

  void putOnClipboard(const std::vector<std::pair<std::string, std::string>>& contents) override {
    QStringList words{"offer"};
    const std::string folder = Desk::instance().folder("clipboard");
    for (const auto& [name, data] : contents) {
      const std::string file = folder + '/' + std::to_string(words.size());
      writeRawFile(file, data);
      words << QString::fromStdString(name) << QString::fromStdString(file);
    }
    auto owner = std::make_unique<QProcess>();
    owner->start(CONTRACT_CLIPBOARD_CLIENT, words);
    waitUntil([&] { return owner->canReadLine(); });
    endClipboardOwner();
    clipboardOwner_ = std::move(owner);
  }
  std::optional<std::string> readFromClipboard(const std::string& name) override {
    QProcess reader;
    reader.start(CONTRACT_CLIPBOARD_CLIENT, {"read", QString::fromStdString(name)});
    waitUntil([&] { return reader.state() == QProcess::NotRunning; });
    if (reader.exitStatus() != QProcess::NormalExit || reader.exitCode() != 0) return std::nullopt;
    return reader.readAllStandardOutput().toStdString();
  }

  // A user who does nothing.
  void letNextMenuStayOpen() override {}

  std::string folder() override { return Desk::instance().folder("contract"); }
  void writeRawFile(const std::string& path, const std::string& contents) override {
    std::ofstream(path, std::ios::binary) << contents;
  }
  void makeLink(const std::string& path, const std::string& toPath) override {
    fs::create_symlink(toPath, path);
  }
  void writeImageFile(const std::string& path, Size size) override {
    QImage image(static_cast<int>(size.width), static_cast<int>(size.height), QImage::Format_RGB32);
    image.fill(Qt::gray);
    image.save(QString::fromStdString(path), "PNG");
  }
  bool rawFileHas(const std::string& path, const std::string& contents) override {
    return fs::exists(path) && fileContents(path) == contents;
  }
  std::vector<std::string> filesIn(const std::string& folder) override {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
      if (!entry.is_directory()) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  bool othersCanLookInto(const std::string& folder) override {
    return (fs::status(folder).permissions() & (fs::perms::group_all | fs::perms::others_all)) !=
           fs::perms::none;
  }
  std::size_t numberOfThingsInTrash() override {
    const fs::path files = Desk::instance().folder(".local/share") + "/Trash/files";
    if (!fs::exists(files)) return 0;
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(files), fs::directory_iterator()));
  }
  void setDiskIsFull(bool full) override {
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = full ? 0 : limit.rlim_max;
    setrlimit(RLIMIT_FSIZE, &limit);
  }

  bool waitUntil(const std::function<bool()>& done) override {
    RunLoop& loop = platform_->runLoop();
    const Moment end = loop.now() + longestWait;
    // What is waited for may be told by no event of ours.
    const auto looks = loop.scheduleTimer(
        lookInterval, true, [](RunLoopTimer&) {}, RunLoopModes::common());
    bool reached = false;
    platform_->runLoopHost().runUntil([&] {
      reached = done();
      return reached || loop.now() > end;
    });
    looks->invalidate();
    return reached;
  }

 private:
  void endClipboardOwner() {
    if (!clipboardOwner_) return;
    clipboardOwner_->kill();
    clipboardOwner_->waitForFinished();
  }
  /// Returns once it is in front.
  ProcessSerialNumber adopt(std::unique_ptr<Client> client) {
    ProcessSerialNumber number;
    waitUntil([&] {
      number = platform_->processes().getFrontProcess();
      return number.lowLongOfPSN == static_cast<std::uint32_t>(client->pid());
    });
    clients_[number.lowLongOfPSN] = std::move(client);
    return number;
  }
  static Color colorOf(const QColor& color) {
    return Color::colorWithCalibratedRed(color.redF(), color.greenF(), color.blueF(),
                                         color.alphaF());
  }
  static xcb_window_t windowOf(const WindowTracker& tracker, ProcessSerialNumber client) {
    for (const ManagedWindow& window : tracker.windows()) {
      if (window.pid == static_cast<std::int32_t>(client.lowLongOfPSN)) return window.id;
    }
    return XCB_NONE;
  }
  bool keyboardIsFree() {
    const bool free = hands_.grabKeyboard();
    if (free) hands_.ungrabKeyboard();
    return free;
  }
  std::string keyName(std::uint16_t keyCode) {
    const auto code = KeyCodeTable::xCodeFromKeyCode(keyCode).value_or(0);
    const XReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
        hands_.xcb(), xcb_get_keyboard_mapping(hands_.xcb(), code, 1), nullptr));
    char name[64] = "none";
    if (map) {
      xkb_keysym_get_name(xcb_get_keyboard_mapping_keysyms(map.get())[0], name, sizeof name);
    }
    return name;
  }

  test::XClient hands_;
  int keysDown_ = 0;
  Moment nextPress_ = 0;
  std::unique_ptr<DesktopPlatform> platform_;
  std::map<std::uint32_t, std::unique_ptr<Client>> clients_;
  ProcessSerialNumber menuClient_;
  std::unique_ptr<QProcess> clipboardOwner_;
};

}  // namespace

std::unique_ptr<ContractPlatform> makeContractPlatform() {
  return std::make_unique<DesktopContractPlatform>();
}

}  // namespace qb
