#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace qb::test {

/// A program that ends with this object, and with the test program if that dies.
class Program {
 public:
  Program() = default;
  /// `display` becomes DISPLAY in its environment; `keptDescriptor` stays open in it.
  Program(const std::vector<std::string>& arguments, const std::string& display,
          int keptDescriptor = -1);
  ~Program() { end(); }
  Program(Program&& other) noexcept;
  Program& operator=(Program&& other) noexcept;

  /// SIGKILL, and waits until it is gone.
  void end();

 private:
  pid_t pid_ = 0;
};

/// An Xvfb of its own, on a display number that was free.
class XServer {
 public:
  explicit XServer(const std::vector<std::string>& options = {});
  /// As in DISPLAY; empty when the server did not start.
  const std::string& display() const { return display_; }

 private:
  std::string display_;
  Program program_;
};

/// Which keys openbox binds.
enum class WindowManagerKeys {
  None,
  /// Alt+Tab and Alt+Shift+Tab, as it comes.
  AltTab,
};

/// Starts openbox and waits until it manages windows.
Program startWindowManager(const std::string& display, WindowManagerKeys keys);

}  // namespace qb::test
