// An open file of the system.
#pragma once

#include <unistd.h>

#include <utility>

namespace Velkstep {

/// Owns a file descriptor and closes it; -1 stands for none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }

  int number() const { return number_; }

 private:
  int number_ = -1;
};

}  // namespace Velkstep
