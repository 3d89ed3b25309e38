#include "PlatformDesktop/processes/Launcher.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

/// In the child: only what is safe after a fork among threads.
[[noreturn]] void becomeProgram(char* const* arguments, const char* folder, int errorPipe) {
  setsid();
  if (fork() != 0) _exit(0);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const int number : {SIGINT, SIGTERM, SIGPIPE, SIGHUP, SIGCHLD}) signal(number, SIG_DFL);
  const int null = open("/dev/null", O_RDONLY);
  if (null >= 0) dup2(null, STDIN_FILENO);
  if (chdir(folder) != 0) {
    // A folder that has gone does not keep the program from running.
  }
  execvp(arguments[0], arguments);
  const int error = errno;
  [[maybe_unused]] const ssize_t written = write(errorPipe, &error, sizeof error);
  _exit(127);
}

}  // namespace

bool startDetached(const std::vector<std::string>& words, const std::string& workingFolder) {
  if (words.empty()) return false;
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const std::string folder = workingFolder.empty() ? DesktopFolders::home() : workingFolder;
  // Closed by the exec when that succeeds.
  std::array<int, 2> errorPipe{};
  if (pipe2(errorPipe.data(), O_CLOEXEC) != 0) return false;
  const pid_t child = fork();
  if (child == 0) becomeProgram(arguments.data(), folder.c_str(), errorPipe[1]);
  close(errorPipe[1]);
  int error = 0;
  bool started = child > 0;
  if (started) {
    waitpid(child, nullptr, 0);
    ssize_t got = 0;
    do {
      got = read(errorPipe[0], &error, sizeof error);
    } while (got < 0 && errno == EINTR);
    started = got == 0;
  }
  close(errorPipe[0]);
  return started;
}

bool startApplication(const DesktopEntry& entry, const std::string& file) {
  std::vector<std::string> words = entry.commandLine(file);
  if (words.empty()) return false;
  if (entry.runsInTerminal) words.insert(words.begin(), {"x-terminal-emulator", "-e"});
  return startDetached(words, entry.workingFolder);
}

}  // namespace qb
