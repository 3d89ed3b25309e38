// quillbox-relauncher: waits for a process to end, then becomes the program that is to follow it.
//
//   quillbox-relauncher [--limit SECONDS] PIDFD PROGRAM [ARGUMENT...]
//
// PIDFD is an inherited descriptor of the process (pidfd_open): unlike a process number it cannot
// come to mean another one. Nothing is started when the process has not gone within the limit, lest
// two of them fight for the keyboard.

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int usageError = 64;
constexpr int programError = 69;
constexpr int timeLimitError = 75;

std::optional<int> number(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < 0) return std::nullopt;
  return value;
}

enum class Outcome { Gone, StillThere, Failed };

Outcome waitForEnd(int process, std::chrono::seconds limit) {
  const auto deadline = Clock::now() + limit;
  pollfd watched{process, POLLIN, 0};
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    const int ready = poll(&watched, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0);
    if (ready > 0) return (watched.revents & POLLNVAL) != 0 ? Outcome::Failed : Outcome::Gone;
    if (ready == 0) return Outcome::StillThere;
    if (errno != EINTR) return Outcome::Failed;
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::chrono::seconds limit{20};
  int at = 1;
  if (argc > 2 && std::string_view(argv[1]) == "--limit") {
    const auto seconds = number(argv[2]);
    // More than a day would not fit into the wait.
    if (!seconds || *seconds > 86400) return usageError;
    limit = std::chrono::seconds(*seconds);
    at = 3;
  }
  const auto process = argc > at + 1 ? number(argv[at]) : std::nullopt;
  if (!process) {
    std::fputs("usage: quillbox-relauncher [--limit SECONDS] PIDFD PROGRAM [ARGUMENT...]\n",
               stderr);
    return usageError;
  }
  switch (waitForEnd(*process, limit)) {
    case Outcome::Gone:
      break;
    case Outcome::StillThere:
      std::fputs("quillbox-relauncher: the program has not ended; it is not started again.\n",
                 stderr);
      return timeLimitError;
    case Outcome::Failed:
      std::fputs("quillbox-relauncher: there is no process to wait for.\n", stderr);
      return usageError;
  }
  close(*process);
  char** const command = argv + at + 1;
  execv(command[0], command);
  std::fprintf(stderr, "quillbox-relauncher: %s cannot be started: %s\n", command[0],
               std::strerror(errno));
  return programError;
}
