#pragma once

#include <cstdint>
#include <optional>

namespace qb {

/// From which event to which the keyboard is ours, by the sequence numbers of the connection: an
/// event in the queue may be older than the request that we have just sent.
class GrabSpan {
 public:
  /// Events with this sequence number and later ones are ours.
  void begin(std::uint32_t sequence) { begin_ = sequence; }
  /// Events before the request with this sequence number are ours, others no more.
  void end(std::uint32_t sequence) {
    begin_.reset();
    end_ = sequence;
  }
  /// Whether the keyboard is ours by now.
  bool isOpen() const { return begin_.has_value(); }
  bool contains(std::uint32_t sequence) {
    if (begin_ && !isBefore(sequence, *begin_)) return true;
    if (end_ && isBefore(sequence, *end_)) return true;
    // Numbers wrap; an end that has been passed must not come to lie ahead again.
    end_.reset();
    return false;
  }

 private:
  static bool isBefore(std::uint32_t a, std::uint32_t b) {
    return static_cast<std::int32_t>(a - b) < 0;
  }
  std::optional<std::uint32_t> begin_, end_;
};

}  // namespace qb
