#pragma once

#include <string>
#include <vector>

namespace qb {

/// What the desktop starts at login, for this user. Main thread.
class LoginItems {
 public:
  struct LoginItem {
    /// Names the entry for `remove`.
    std::string identifier;
    /// The program that it starts; empty when that cannot be told.
    std::string path;
    friend bool operator==(const LoginItem&, const LoginItem&) = default;
  };

  virtual ~LoginItems() = default;
  /// The entries that are in force, in a fixed order.
  virtual std::vector<LoginItem> snapshot() const = 0;
  /// Has the program at `path` started at login. False when that cannot be kept.
  virtual bool insertItemLast(const std::string& path) = 0;
  /// False when it was not there or could not go.
  virtual bool remove(const LoginItem& item) = 0;
};

}  // namespace qb
