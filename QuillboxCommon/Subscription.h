#pragma once

#include <functional>
#include <utility>

namespace qb {

/// Something that lasts as long as this object: a registration, a grab, a callback. Destruction or
/// `cancel` ends it. Movable; an empty one ends nothing.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
  Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      cancel();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  ~Subscription() { cancel(); }

  void cancel() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }
  explicit operator bool() const { return end_ != nullptr; }

 private:
  std::function<void()> end_;
};

}  // namespace qb
