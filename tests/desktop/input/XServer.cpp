#include "XServer.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

#include "PlatformDesktop/input/XInput.h"
#include "XClient.h"

namespace qb::test {

Program::Program(const std::vector<std::string>& arguments, const std::string& display,
                 int keptDescriptor) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  const pid_t parent = getpid();
  pid_ = fork();
  if (pid_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(1);
  if (!display.empty()) setenv("DISPLAY", display.c_str(), 1);
  const int null = open("/dev/null", O_RDWR);
  dup2(null, STDIN_FILENO);
  dup2(null, STDOUT_FILENO);
  dup2(null, STDERR_FILENO);
  if (keptDescriptor >= 0) fcntl(keptDescriptor, F_SETFD, 0);
  execvp(argv[0], argv.data());
  _exit(127);
}

Program::Program(Program&& other) noexcept : pid_(std::exchange(other.pid_, 0)) {}

Program& Program::operator=(Program&& other) noexcept {
  if (this != &other) {
    end();
    pid_ = std::exchange(other.pid_, 0);
  }
  return *this;
}

void Program::end() {
  if (pid_ <= 0) return;
  kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
  pid_ = 0;
}

XServer::XServer(const std::vector<std::string>& options) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  std::vector<std::string> arguments{"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0",
                                     "800x600x24", "-nolisten", "tcp", "-noreset",
                                     // Keys repeat late, lest one does that is down for no longer
                                     // than a busy machine stands still.
                                     "-ardelay", "3000"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  program_ = Program(arguments, "", ends[1]);
  close(ends[1]);
  std::string number;
  char character = 0;
  pollfd ready{ends[0], POLLIN, 0};
  while (poll(&ready, 1, 60000) > 0 && read(ends[0], &character, 1) == 1 && character != '\n') {
    number += character;
  }
  close(ends[0]);
  if (!number.empty()) display_ = ":" + number;
}

Program startWindowManager(const std::string& display, WindowManagerKeys keys) {
  const auto folder =
      std::filesystem::temp_directory_path() / ("quillbox-input-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const auto file = folder / (keys == WindowManagerKeys::None ? "none.xml" : "alt-tab.xml");
  std::ofstream configuration(file);
  configuration << R"(<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard>)";
  if (keys == WindowManagerKeys::AltTab) {
    // Not interactive: keys as quick as a test's would catch it waiting for a release that it
    // missed.
    const std::string action =
        "<interactive>no</interactive><dialog>none</dialog></action></keybind>";
    configuration << R"(<keybind key="A-Tab"><action name="NextWindow">)" << action
                  << R"(<keybind key="A-S-Tab"><action name="PreviousWindow">)" << action;
  } else {
    // An empty list would bring the built-in bindings.
    configuration << R"(<keybind key="C-A-W-F12"><action name="NextWindow"/></keybind>)";
  }
  configuration << "</keyboard></openbox_config>";
  configuration.close();

  // It forgets windows that ask to be mapped while it begins.
  const auto running = folder / "runs";
  Program openbox({"openbox", "--sm-disable", "--config-file", file.string(), "--startup",
                   "touch " + running.string()},
                  display);
  EXPECT_TRUE(waitUntil({}, [&] { return std::filesystem::exists(running); }))
      << "the window manager does not get to run";
  // It has read everything and bound its keys by the time that it gives frames.
  XClient(display).openWindow();
  std::filesystem::remove_all(folder);
  return openbox;
}

}  // namespace qb::test
