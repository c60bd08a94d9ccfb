#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace homewarden::emulator {

using Microseconds = std::chrono::microseconds;

// What the emulator has still to do, by time. Its time moves only when it is run.
class Agenda {
 public:
  using Id = std::uint64_t;

  Microseconds now() const { return now_; }

  // Calls that are due at the same time happen in the order of asking.
  Id after(Microseconds delay, std::function<void()> call);

  // An id that has been called or cancelled, or 0, is ignored.
  void cancel(Id id);

  // Does everything due up to `end`, each at its own time, and moves the time there.
  void run_until(Microseconds end);

  // When something is due next; nothing when nothing is to do.
  std::optional<Microseconds> next() const;

 private:
  std::map<std::pair<Microseconds, Id>, std::function<void()>> calls_;
  Microseconds now_{0};
  Id last_id_ = 0;
};

}  // namespace homewarden::emulator
