// Serves the hands and eyes of Desktop to another program, over standard input and output: one
// command a line, one answer a line, in order. An answer begins with "ok" or "no" ("no" is a thing
// that did not happen in time), or with "error" for a command that cannot be carried out.
//
//   tap NAME...                presses them in order and releases them in the opposite one
//   key NAME down|up           button N down|up        move X Y        release-all
//   active                     "ok CLASS"              wait-active CLASS SECONDS
//   wait-focused CLASS SECONDS     active-title, focused-title   "ok TITLE" of that window
//   activate CLASS             clients                 wait-clients COUNT SECONDS
//   mapped CLASS               wait-mapped CLASS SECONDS     wait-unmapped CLASS SECONDS
//   wait-selection NAME SECONDS   until some program owns the selection
//   size                       "ok WIDTH HEIGHT"
//   remember NAME X Y W H      keeps the picture of an area under a name
//   wait-change NAME SECONDS   until the area looks different from what was remembered
//   wait-same NAME SECONDS     until it looks as remembered
//   latency KEY down|up NAME SECONDS   remembers NAME's area anew, sends the key, and answers
//                              "ok MICROSECONDS" from there to the first look with another picture
//   differs NAME               "ok COUNT" pixels that differ at this moment
//   pixel X Y                  "ok RRGGBB"           wait-pixel X Y RRGGBB SECONDS
//   geometry CLASS             "ok X Y W H" of its largest mapped window below the root
//   windows CLASS              "ok X Y W H X Y W H ..." of all of them
//   watch X Y W H, watched     "ok CHANGED LOOKS": how many looks in between showed another picture
//   input-free                 wait-input-free SECONDS
//   chord-taken SUPER|ALT|CONTROL KEY  wait-chord-taken SUPER|ALT|CONTROL KEY SECONDS
#include <xcb/xcb.h>

#include <atomic>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <thread>

#include "Desktop.h"

namespace {

using probe::Area;
using probe::Desktop;
using probe::Picture;
using probe::Seconds;

/// Looks at an area over and over on a connection and thread of its own.
class Watcher {
 public:
  explicit Watcher(const Area& area) : area_(area), desktop_(Desktop::connect("")) {
    if (!desktop_) return;
    before_ = desktop_->picture(area_);
    thread_ = std::jthread([this](const std::stop_token& stop) { look(stop); });
  }
  std::string finish() {
    thread_.request_stop();
    if (thread_.joinable()) thread_.join();
    return "ok " + std::to_string(changed_) + " " + std::to_string(looks_);
  }

 private:
  void look(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      if (desktop_->picture(area_) != before_) ++changed_;
      ++looks_;
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  }

  Area area_;
  std::unique_ptr<Desktop> desktop_;
  Picture before_;
  std::atomic<int> changed_ = 0;
  std::atomic<int> looks_ = 0;
  std::jthread thread_;
};

class Server {
 public:
  explicit Server(Desktop& desktop) : desktop_(desktop) {}

  std::string answer(const std::string& line) {
    std::istringstream words(line);
    std::string command;
    words >> command;
    auto known = commands_.find(command);
    if (known == commands_.end()) return "error unknown command: " + command;
    std::string result = known->second(words);
    return words.fail() ? "error bad arguments: " + line : result;
  }

 private:
  using Command = std::function<std::string(std::istringstream&)>;
  struct Remembered {
    Area area;
    Picture picture;
  };

  static std::string yesOrNo(bool holds) { return holds ? "ok" : "no"; }

  template <typename T>
  static T next(std::istringstream& words) {
    T value{};
    words >> value;
    return value;
  }

  static Area nextArea(std::istringstream& words) {
    Area area;
    words >> area.x >> area.y >> area.width >> area.height;
    return area;
  }

  static bool nextIsDown(std::istringstream& words) { return next<std::string>(words) == "down"; }

  std::uint16_t nextModifier(std::istringstream& words) {
    const auto name = next<std::string>(words);
    if (name == "control") return XCB_MOD_MASK_CONTROL;
    return name == "alt" ? XCB_MOD_MASK_1 : XCB_MOD_MASK_4;
  }

  std::string wait(std::istringstream& words, const std::function<bool()>& holds) {
    const Seconds timeout(next<double>(words));
    if (words.fail()) return {};
    return yesOrNo(desktop_.waitUntil(holds, timeout));
  }

  std::string clientNames() {
    std::string result = "ok";
    for (const auto& client : desktop_.clients()) result += " " + client.name;
    return result;
  }

  std::string activate(const std::string& name) {
    for (const auto& client : desktop_.clients()) {
      if (client.name != name) continue;
      desktop_.activate(client.window);
      return "ok";
    }
    return "error no client " + name;
  }

  std::string pixel(std::int16_t x, std::int16_t y) {
    const auto picture = desktop_.picture({x, y, 1, 1});
    char text[8] = "none";
    if (!picture.empty()) std::snprintf(text, sizeof text, "%06x", picture.front() & 0xffffff);
    return text;
  }

  std::string geometry(const std::string& name) {
    const auto windows = desktop_.mappedWindows(name);
    if (windows.empty()) return "no";
    Area area;
    for (const auto window : windows) {
      const auto other = desktop_.geometry(window);
      if (other.width * other.height > area.width * area.height) area = other;
    }
    std::ostringstream result;
    result << "ok " << area.x << " " << area.y << " " << area.width << " " << area.height;
    return result.str();
  }

  std::string windows(const std::string& name) {
    std::ostringstream result;
    result << "ok";
    for (const auto window : desktop_.mappedWindows(name)) {
      const Area area = desktop_.geometry(window);
      result << " " << area.x << " " << area.y << " " << area.width << " " << area.height;
    }
    return result.str();
  }

  bool looksAsRemembered(const std::string& name) {
    const auto& remembered = pictures_[name];
    return desktop_.picture(remembered.area) == remembered.picture;
  }

  std::string pixelsThatDiffer(const std::string& name) {
    const auto& remembered = pictures_[name];
    const auto now = desktop_.picture(remembered.area);
    if (now.size() != remembered.picture.size()) return "error no picture " + name;
    std::size_t count = 0;
    for (std::size_t i = 0; i < now.size(); ++i) count += now[i] != remembered.picture[i];
    return "ok " + std::to_string(count);
  }

  std::string latency(const std::string& key, bool down, const std::string& name, Seconds timeout) {
    auto& remembered = pictures_[name];
    remembered.picture = desktop_.picture(remembered.area);
    const auto begin = probe::Clock::now();
    if (!desktop_.key(key, down)) return "error no key " + key;
    const auto end =
        desktop_.waitForChange(remembered.area, remembered.picture, timeout, Seconds(0.0001));
    if (!end) return "no";
    return "ok " + std::to_string(
                       std::chrono::duration_cast<std::chrono::microseconds>(*end - begin).count());
  }

  std::map<std::string, Command> handCommands() {
    return {
        {"key",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           return desktop_.key(name, nextIsDown(words)) ? "ok" : "error no key " + name;
         }},
        {"tap",
         [this](auto& words) {
           std::vector<std::string> names;
           for (std::string name; words >> name;) names.push_back(name);
           // The end of the line is no mistake.
           words.clear();
           return desktop_.tap(names) ? "ok" : "error no such keys";
         }},
        {"button",
         [this](auto& words) {
           const auto number = static_cast<std::uint8_t>(next<int>(words));
           desktop_.button(number, nextIsDown(words));
           return "ok";
         }},
        {"move",
         [this](auto& words) {
           const auto x = next<std::int16_t>(words);
           desktop_.movePointer(x, next<std::int16_t>(words));
           return "ok";
         }},
        {"release-all", [this](auto&) { return desktop_.releaseAll(), "ok"; }},
        {"activate", [this](auto& words) { return activate(next<std::string>(words)); }},
    };
  }

  std::map<std::string, Command> windowCommands() {
    return {
        {"active", [this](auto&) { return "ok " + desktop_.className(desktop_.activeWindow()); }},
        {"wait-active",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           return wait(words, [&] { return desktop_.className(desktop_.activeWindow()) == name; });
         }},
        {"active-title", [this](auto&) { return "ok " + desktop_.title(desktop_.activeWindow()); }},
        {"focused-title",
         [this](auto&) { return "ok " + desktop_.title(desktop_.focusedWindow()); }},
        {"wait-focused",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           return wait(words, [&] { return desktop_.className(desktop_.focusedWindow()) == name; });
         }},
        {"clients", [this](auto&) { return clientNames(); }},
        {"wait-clients",
         [this](auto& words) {
           const auto count = next<std::size_t>(words);
           return wait(words, [&] { return desktop_.clients().size() == count; });
         }},
        {"mapped",
         [this](auto& words) {
           return yesOrNo(!desktop_.mappedWindows(next<std::string>(words)).empty());
         }},
        {"wait-mapped",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           return wait(words, [&] { return !desktop_.mappedWindows(name).empty(); });
         }},
        {"wait-unmapped",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           return wait(words, [&] { return desktop_.mappedWindows(name).empty(); });
         }},
        {"wait-selection",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           return wait(words, [&] { return desktop_.selectionIsOwned(name); });
         }},
        {"geometry", [this](auto& words) { return geometry(next<std::string>(words)); }},
        {"windows", [this](auto& words) { return windows(next<std::string>(words)); }},
        {"size",
         [this](auto&) {
           const auto screen = desktop_.screen();
           return "ok " + std::to_string(screen.width) + " " + std::to_string(screen.height);
         }},
    };
  }

  std::map<std::string, Command> pictureCommands() {
    return {
        {"remember",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           const auto area = nextArea(words);
           pictures_[name] = {area, desktop_.picture(area)};
           return "ok";
         }},
        {"wait-change",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           const Seconds timeout(next<double>(words));
           const auto& remembered = pictures_[name];
           return yesOrNo(
               desktop_.waitForChange(remembered.area, remembered.picture, timeout).has_value());
         }},
        {"latency",
         [this](auto& words) {
           const auto key = next<std::string>(words);
           const bool down = nextIsDown(words);
           const auto name = next<std::string>(words);
           return latency(key, down, name, Seconds(next<double>(words)));
         }},
        {"wait-same",
         [this](auto& words) {
           const auto name = next<std::string>(words);
           return wait(words, [&] { return looksAsRemembered(name); });
         }},
        {"pixel",
         [this](auto& words) {
           const auto x = next<std::int16_t>(words);
           return "ok " + pixel(x, next<std::int16_t>(words));
         }},
        {"wait-pixel",
         [this](auto& words) {
           const auto x = next<std::int16_t>(words);
           const auto y = next<std::int16_t>(words);
           const auto colour = next<std::string>(words);
           return wait(words, [&] { return pixel(x, y) == colour; });
         }},
        {"differs", [this](auto& words) { return pixelsThatDiffer(next<std::string>(words)); }},
        {"watch",
         [this](auto& words) {
           watcher_ = std::make_unique<Watcher>(nextArea(words));
           return "ok";
         }},
        {"watched",
         [this](auto&) { return watcher_ ? watcher_->finish() : "error nothing is watched"; }},
    };
  }

  std::map<std::string, Command> grabCommands() {
    return {
        {"input-free", [this](auto&) { return yesOrNo(desktop_.inputIsFree()); }},
        {"wait-input-free",
         [this](auto& words) { return wait(words, [&] { return desktop_.inputIsFree(); }); }},
        {"chord-taken",
         [this](auto& words) {
           const auto modifier = nextModifier(words);
           return yesOrNo(desktop_.chordIsTaken(modifier, next<std::string>(words)));
         }},
        {"wait-chord-taken",
         [this](auto& words) {
           const auto modifier = nextModifier(words);
           const auto key = next<std::string>(words);
           return wait(words, [&] { return desktop_.chordIsTaken(modifier, key); });
         }},
    };
  }

  std::map<std::string, Command> allCommands() {
    auto result = handCommands();
    result.merge(windowCommands());
    result.merge(pictureCommands());
    result.merge(grabCommands());
    return result;
  }

  Desktop& desktop_;
  std::map<std::string, Remembered> pictures_;
  std::unique_ptr<Watcher> watcher_;
  std::map<std::string, Command> commands_ = allCommands();
};

}  // namespace

int main() {
  auto desktop = Desktop::connect("");
  if (!desktop) {
    std::cout << "error no display" << std::endl;
    return 1;
  }
  desktop->stopAutoRepeat();
  std::cout << "ok" << std::endl;
  Server server(*desktop);
  for (std::string line; std::getline(std::cin, line);) {
    const auto answer = server.answer(line);
    desktop->synchronize();
    std::cout << answer << std::endl;
  }
  // A test that failed half-way must not leave a key down.
  desktop->releaseAll();
  return 0;
}
