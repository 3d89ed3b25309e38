#include <algorithm>

#include "ContractPlatform.h"
#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb {

namespace {

constexpr TimeInterval longestWait = 5;
constexpr TimeInterval waitStep = 0.01;

class SimulatedContractPlatform : public ContractPlatform {
 public:
  SimulatedContractPlatform() {
    simulated_.workspace().install(client_);
    simulated_.fileSystem().putRaw(client_.bundlePath, "[Desktop Entry]");
    simulated_.fileSystem().makeFolder(folder());
  }

  Platform& platform() override { return simulated_; }

  std::string clientPath() override { return client_.bundlePath; }
  std::string clientBundleIdentifier() override { return client_.bundleIdentifier; }
  ProcessSerialNumber startClient() override {
    const ProcessSerialNumber number = simulated_.processes().launchInFront(client_);
    simulated_.processes().setWindowFrame(number, windowFrame_);
    simulated_.windowPictures().putWindow(clientWindow(number), windowFrame_.size);
    return number;
  }
  void stopClient(ProcessSerialNumber client) override {
    simulated_.processes().terminate(client);
    simulated_.windowPictures().removeWindow(clientWindow(client));
  }
  void bringClientToFront(ProcessSerialNumber client) override {
    simulated_.processes().bringToFront(client);
  }
  Rect clientWindowFrame(ProcessSerialNumber) override { return windowFrame_; }

  WindowID clientWindow(ProcessSerialNumber client) override { return client.lowLongOfPSN; }
  Color clientColor() override { return Color::gray(); }
  std::optional<Color> colorInMiddle(const Image& image) override {
    if (!simulatedImageName(image).starts_with("window:")) return std::nullopt;
    return clientColor();
  }

  ClientCounts keysReceived(ProcessSerialNumber client, std::uint16_t keyCode) override {
    ClientCounts counts;
    for (const auto& received : simulated_.keyboard().frontApplicationReceived()) {
      if (received.process != client || received.keyCode != keyCode) continue;
      ++(received.type == EventTypeKeyDown ? counts.keyDowns : counts.keyUps);
    }
    return counts;
  }
  std::string textReceived(ProcessSerialNumber client) override {
    std::string text;
    for (const auto& received : simulated_.keyboard().frontApplicationReceived()) {
      if (received.process == client && received.type == EventTypeKeyDown) {
        text += received.characters;
      }
    }
    return text;
  }
  int pressesReceived(ProcessSerialNumber client) override {
    const auto& received = simulated_.pointer().clientReceived();
    return static_cast<int>(
        std::count_if(received.begin(), received.end(), [client](const auto& event) {
          return event.process == client && event.type == EventTypeLeftMouseDown;
        }));
  }

  ProcessSerialNumber startMenuClient() override {
    const ProcessSerialNumber number = simulated_.processes().launchInFront(
        {"org.contract.menus", "Menus", "/apps/Menus.desktop"});
    simulated_.scripts().menus().setMenuBar(
        number,
        {{"File", {{"Close", {}, false}}}, {"View", {{"Zoom", {{"More", {{"200 %", {}}}}}}}}});
    return number;
  }
  bool menuClientHasZoomed() override {
    const auto& clicks = simulated_.scripts().menus().clicks();
    return !clicks.empty() && clicks.back().path == "View:Zoom:More:200 %";
  }

  void takeHotKeyElsewhere(std::uint16_t keyCode, std::uint32_t modifiers) override {
    simulated_.hotKeys().setOwnedByAnotherProgram(keyCode, modifiers);
  }

  void pressKey(std::uint16_t keyCode) override { simulated_.keyboard().press(keyCode); }
  void releaseKey(std::uint16_t keyCode) override { simulated_.keyboard().release(keyCode); }
  void repeatKey(std::uint16_t keyCode) override { simulated_.keyboard().repeat(keyCode); }
  void movePointer(Point point) override { simulated_.pointer().moveTo(point); }
  void pressButton(int button) override { simulated_.pointer().press(button); }
  void releaseButton(int button) override { simulated_.pointer().release(button); }
  void scrollUp() override { simulated_.pointer().scroll(0, -13); }

  void putOnClipboard(const std::vector<std::pair<std::string, std::string>>& contents) override {
    PasteboardContents item;
    for (const auto& [name, data] : contents) {
      item.emplace_back(typeNamed(name), PropertyList::Data(data.begin(), data.end()));
    }
    simulated_.pasteboards().general().putByAnotherProgram({item});
  }
  std::optional<std::string> readFromClipboard(const std::string& name) override {
    const auto data = simulated_.pasteboards().general().dataForType(typeNamed(name));
    return data ? std::optional(std::string(data->begin(), data->end())) : std::nullopt;
  }

  void letNextMenuStayOpen() override {
    simulated_.menuPresenter().whenMenuOpens([](SimulatedMenuUser&) {});
  }

  std::string folder() override { return "/home/user/contract"; }
  void writeRawFile(const std::string& path, const std::string& contents) override {
    simulated_.fileSystem().putRaw(path, contents);
  }
  void makeLink(const std::string& path, const std::string& toPath) override {
    simulated_.fileSystem().putLink(path, toPath);
  }
  void writeImageFile(const std::string& path, Size size) override {
    simulated_.fileSystem().putRaw(path, "picture");
    simulated_.graphics().putImageFile(path, size);
  }
  bool rawFileHas(const std::string& path, const std::string& contents) override {
    return simulated_.fileSystem().raw(path) == contents;
  }
  std::vector<std::string> filesIn(const std::string& folder) override {
    std::vector<std::string> names;
    for (const std::string& path : simulated_.fileSystem().paths()) {
      if (path.rfind('/') == folder.size() && path.starts_with(folder)) {
        names.push_back(path.substr(folder.size() + 1));
      }
    }
    return names;
  }
  bool othersCanLookInto(const std::string& folder) override {
    return !simulated_.fileSystem().isPrivate(folder);
  }
  std::size_t numberOfThingsInTrash() override { return simulated_.trash().paths().size(); }
  void setDiskIsFull(bool full) override { simulated_.fileSystem().setWritesFail(full); }

  bool waitUntil(const std::function<bool()>& done) override {
    const Moment end = simulated_.runLoopHost().now() + longestWait;
    while (!done()) {
      if (simulated_.runLoopHost().now() > end) return false;
      simulated_.runFor(waitStep);
      for (SimulatedWindowPeer* window : simulated_.windowServer().visibleWindows()) {
        simulated_.windowServer().paintDirty(*window);
      }
    }
    return true;
  }

 private:
  static std::string typeNamed(const std::string& name) {
    if (name == "text/plain") return "public.utf8-plain-text";
    if (name == "text/rtf") return "public.rtf";
    return name == "image/png" ? "public.png" : name;
  }

  SimulatedPlatform simulated_;
  const SimulatedApplication client_{"org.contract.client", "Client",
                                     "/usr/share/applications/org.contract.client.desktop"};
  const Rect windowFrame_ = Rect::make(200, 200, 400, 300);
};

}  // namespace

std::unique_ptr<ContractPlatform> makeContractPlatform() {
  return std::make_unique<SimulatedContractPlatform>();
}

}  // namespace qb
