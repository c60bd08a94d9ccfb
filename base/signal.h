#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace homewarden {

// A list of functions called in the order in which they were connected. A function may connect
// others while the signal is being emitted; they are called from the next emission on. Handlers are
// connected once, when the parts of the program are put together, and live as long as the signal.
template <class... Args>
class Signal {
 public:
  using Handler = std::function<void(Args...)>;

  // The same function connected twice is called twice.
  void connect(Handler handler) {
    handlers_.push_back(std::make_shared<Handler>(std::move(handler)));
  }

  void operator()(Args... args) const {
    const std::size_t count = handlers_.size();
    for (std::size_t i = 0; i < count; ++i) {
      const auto handler = handlers_[i];  // keeps it alive if the list grows meanwhile
      (*handler)(args...);
    }
  }

 private:
  std::vector<std::shared_ptr<Handler>> handlers_;
};

// A value that tells whoever watches it that it changed.
template <class T>
class Property {
 public:
  Property() = default;
  explicit Property(T value) : value_(std::move(value)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property&) = delete;

  const T& get() const { return value_; }
  operator const T&() const { return value_; }

  // Setting the value it has tells nobody.
  void set(const T& value) {
    if (value == value_) return;
    value_ = value;
    changed();
  }
  void set(T&& value) {
    if (value == value_) return;
    value_ = std::move(value);
    changed();
  }
  Property& operator=(const T& value) {
    set(value);
    return *this;
  }
  Property& operator=(T&& value) {
    set(std::move(value));
    return *this;
  }

  Signal<> changed;

 private:
  T value_{};
};

}  // namespace homewarden
