#pragma once

#include <unistd.h>

namespace qb {

/// An open file, closed with this object.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  explicit operator bool() const { return number_ >= 0; }
  int get() const { return number_; }

 private:
  int number_;
};

}  // namespace qb
