#include "PlatformDesktop/scripting/ShellCommand.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace qb {

namespace {

constexpr std::size_t mostOutput = std::size_t{16} << 20;
constexpr std::int32_t cannotRun = 127;

struct Pipe {
  Pipe() {
    if (pipe2(ends.data(), O_CLOEXEC) != 0) ends = {-1, -1};
  }
  ~Pipe() {
    closeReading();
    closeWriting();
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  void closeReading() { closeEnd(ends[0]); }
  void closeWriting() { closeEnd(ends[1]); }
  static void closeEnd(int& end) {
    if (end >= 0) close(end);
    end = -1;
  }
  std::array<int, 2> ends{};
};

/// In the child: only what is safe after a fork among threads.
[[noreturn]] void becomeShell(const char* command, int output, int complaints) {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const int number : {SIGINT, SIGTERM, SIGPIPE, SIGHUP, SIGCHLD}) signal(number, SIG_DFL);
  const int null = open("/dev/null", O_RDONLY);
  if (null >= 0) dup2(null, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(complaints, STDERR_FILENO);
  execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
  _exit(cannotRun);
}

/// Takes what has come; closes the pipe at its end.
void readSome(Pipe& pipe, std::string& text) {
  std::array<char, 65536> buffer{};
  const ssize_t got = read(pipe.ends[0], buffer.data(), buffer.size());
  if (got < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (got <= 0) return pipe.closeReading();
  const auto room = mostOutput - std::min(text.size(), mostOutput);
  text.append(buffer.data(), std::min(static_cast<std::size_t>(got), room));
}

void readAll(Pipe& output, std::string& text, Pipe& complaints, std::string& complaint) {
  while (output.ends[0] >= 0 || complaints.ends[0] >= 0) {
    // A closed end is a negative number, which `poll` passes over.
    std::array<pollfd, 2> sources{{{output.ends[0], POLLIN, 0}, {complaints.ends[0], POLLIN, 0}}};
    if (poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR) return;
    if (sources[0].revents != 0) readSome(output, text);
    if (sources[1].revents != 0) readSome(complaints, complaint);
  }
}

}  // namespace

ShellCommandResult runShellCommand(const std::string& command) {
  ShellCommandResult result;
  Pipe output, complaints;
  const pid_t child = output.ends[1] < 0 || complaints.ends[1] < 0 ? -1 : fork();
  if (child == 0) becomeShell(command.c_str(), output.ends[1], complaints.ends[1]);
  if (child < 0) {
    result.status = cannotRun;
    result.complaint = "The shell cannot be started.";
    return result;
  }
  output.closeWriting();
  complaints.closeWriting();
  readAll(output, result.output, complaints, result.complaint);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  while (result.complaint.ends_with('\n')) result.complaint.pop_back();
  return result;
}

}  // namespace qb
