#pragma once

#include <cstdint>
#include <optional>

namespace qb {

class ApplicationControl;

/// Which generation of the system this program runs on. Each answer is found once. Main thread.
class SystemVersion {
 public:
  explicit SystemVersion(const ApplicationControl& application) : application_(application) {}

  /// Sets those that are given as far as the system tells them; 10, 8, 0 when it tells nothing.
  void systemVersionMajor(std::int16_t* major, std::int16_t* minor, std::int16_t* revision) const;
  bool isMountainLionOrEarlier();
  bool isMavericksOrLater() { return !isMountainLionOrEarlier(); }
  /// Intended, here and in the next: a later major version has to have the minor one too.
  bool isYosemiteOrLater();
  bool isElCapitanOrLater();

 private:
  bool isAtLeastTen(std::int16_t minor) const;

  const ApplicationControl& application_;
  std::optional<bool> isMountainLionOrEarlier_, isYosemiteOrLater_, isElCapitanOrLater_;
};

}  // namespace qb
