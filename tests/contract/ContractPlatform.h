#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Platform.h"
#include "Platform/Processes.h"
#include "Platform/WindowPictures.h"
#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

/// A desktop for the contract tests: the platform under test, and the means to do what a user and
/// other programs do on it. Each platform that is to be tested has one of these.
///
/// There is one client program, an installed application with one window a process that writes down
/// what keys and presses it gets. Points and frames are from the lower left of the primary display.
/// What is done here may take its time to be seen by the platform: the tests wait for it.
class ContractPlatform {
 public:
  virtual ~ContractPlatform() = default;
  virtual Platform& platform() = 0;

  /// The client application's bundle path; no instance runs at first.
  virtual std::string clientPath() = 0;
  virtual std::string clientBundleIdentifier() = 0;
  /// Starts an instance and returns once the platform sees it in front.
  virtual ProcessSerialNumber startClient() = 0;
  /// Ends an instance; returns once the platform no longer sees it.
  virtual void stopClient(ProcessSerialNumber client) = 0;
  /// Switches to an instance as its user would, past the platform; returns once it is in front.
  virtual void bringClientToFront(ProcessSerialNumber client) = 0;
  /// Where the window of an instance is.
  virtual Rect clientWindowFrame(ProcessSerialNumber client) = 0;

  /// The window of an instance, and the one colour that all of it has.
  virtual WindowID clientWindow(ProcessSerialNumber client) = 0;
  virtual Color clientColor() = 0;
  /// None for an empty image.
  virtual std::optional<Color> colorInMiddle(const Image& image) = 0;

  struct ClientCounts {
    int keyDowns = 0;
    int keyUps = 0;
  };
  /// What an instance has got of one key so far; repeats count.
  virtual ClientCounts keysReceived(ProcessSerialNumber client, std::uint16_t keyCode) = 0;
  /// The text that an instance has got by keys so far, in UTF-8.
  virtual std::string textReceived(ProcessSerialNumber client) = 0;
  /// How many presses of the left button an instance has got so far.
  virtual int pressesReceived(ProcessSerialNumber client) = 0;

  /// Starts another program, "Menus", and returns once the platform sees it in front. It has a menu
  /// "View" with a menu "Zoom", that has a menu "More", that has an entry "200 %"; and a menu
  /// "File" with an entry "Close", which is disabled.
  virtual ProcessSerialNumber startMenuClient() = 0;
  /// Whether its user, or who stands in for him, has chosen "200 %".
  virtual bool menuClientHasZoomed() = 0;

  /// Another program takes a combination of `HotKeyModifier` bits for itself, for as long as the
  /// desktop lives.
  virtual void takeHotKeyElsewhere(std::uint16_t keyCode, std::uint32_t modifiers) = 0;

  // Hands on the keyboard and the pointer. Buttons are 0 left, 1 right.
  virtual void pressKey(std::uint16_t keyCode) = 0;
  virtual void releaseKey(std::uint16_t keyCode) = 0;
  /// One auto-repeat of a key that is held; it may come by itself, when the wait is long enough.
  virtual void repeatKey(std::uint16_t keyCode) = 0;
  virtual void movePointer(Point point) = 0;
  virtual void pressButton(int button) = 0;
  virtual void releaseButton(int button) = 0;
  /// One notch of the wheel away from its user.
  virtual void scrollUp() = 0;

  /// Another program puts one thing on the clipboard, in types by the names that programs on a
  /// desktop have for them, such as "text/plain".
  virtual void putOnClipboard(const std::vector<std::pair<std::string, std::string>>& contents) = 0;
  /// What another program finds there under such a name; none when there is nothing of that type.
  virtual std::optional<std::string> readFromClipboard(const std::string& name) = 0;

  /// The user leaves the next menu that opens alone: the test itself closes it.
  virtual void letNextMenuStayOpen() = 0;

  /// An existing empty folder of this test.
  virtual std::string folder() = 0;
  virtual void writeRawFile(const std::string& path, const std::string& contents) = 0;
  /// A link to what need not be there.
  virtual void makeLink(const std::string& path, const std::string& toPath) = 0;
  /// A file with a picture of so many pixels.
  virtual void writeImageFile(const std::string& path, Size size) = 0;
  /// Whether the file's bytes are these.
  virtual bool rawFileHas(const std::string& path, const std::string& contents) = 0;
  /// The names of the files that lie directly in a folder, sorted.
  virtual std::vector<std::string> filesIn(const std::string& folder) = 0;
  /// Whether anybody but this user can look into an existing folder.
  virtual bool othersCanLookInto(const std::string& folder) = 0;
  /// How much the trash holds, counting a folder as one.
  virtual std::size_t numberOfThingsInTrash() = 0;
  /// While true nothing can be written, as on a full disk.
  virtual void setDiskIsFull(bool full) = 0;

  /// Serves the loop until `done` answers true; false when it has not for a few seconds.
  virtual bool waitUntil(const std::function<bool()>& done) = 0;
};

/// Defined once in each test program.
std::unique_ptr<ContractPlatform> makeContractPlatform();

}  // namespace qb
