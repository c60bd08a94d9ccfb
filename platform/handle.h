#pragma once

#include <utility>

namespace homewarden {

// A socket or an open file of the system, by its number, that is closed with its owner. How it is
// closed says whoever opened it.
class Handle {
 public:
  using Close = void (*)(int number);

  Handle() = default;
  Handle(int number, Close close) : number_(number), close_(close) {}
  Handle(Handle&& other) noexcept
      : number_(std::exchange(other.number_, -1)), close_(other.close_) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(number_, other.number_);
    std::swap(close_, other.close_);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (is_open()) close_(number_);
  }

  bool is_open() const { return number_ >= 0; }
  // -1 when it is not open.
  int get() const { return number_; }
  // Whoever takes the number closes it; -1 when it is not open.
  int release() { return std::exchange(number_, -1); }

 private:
  int number_ = -1;
  Close close_ = nullptr;
};

}  // namespace homewarden
