#pragma once

#include <unistd.h>

#include <utility>

namespace homewarden::os_linux {

// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  // Owns the number from now on; -1 is none.
  explicit Descriptor(int number = -1) : number_(number) {}
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

  bool is_open() const { return number_ >= 0; }
  int get() const { return number_; }
  // Whoever takes the number closes it; -1 when it is not open.
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

}  // namespace homewarden::os_linux
