#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/clock.h"

namespace homewarden::cm11 {

// Answers the interface's request for its clock: clock bytes, their checksum, 00, 55
// (docs/cm11-protocol.md, "Clock request"). Some revisions send no checksum; there the requests
// cease. Takes a bounded number of tries, then leaves it to the next request.
class ClockSetting {
 public:
  using Milliseconds = std::chrono::milliseconds;

  enum class End {
    kAnswered,  // 55 came
    kSilent,    // no more requests came: taken as set, though nobody said so
    kPolled,    // the interface went on to a poll: set
    kRefused,   // it goes on asking
  };

  ClockSetting(const LocalTime& local_time, Milliseconds now);

  // The clock has to be sent (again) with the time at this moment. Nothing as long as it goes on;
  // after an end they must not be called any more. At most four times the clock is sent.
  std::optional<End> receive(std::uint8_t byte, const LocalTime& local_time, Milliseconds now);
  std::optional<End> advance(const LocalTime& local_time, Milliseconds now);
  // When advance() has to be called next.
  Milliseconds deadline() const { return deadline_; }
  // Bytes to be written since the last call; "" when there are none.
  std::string take_output();

 private:
  std::optional<End> send(const LocalTime& local_time, Milliseconds now);

  std::string output_;
  std::uint8_t expected_ = 0;
  bool acknowledged_ = false;  // 00 has been written
  bool wrong_ = false;         // a checksum came and it was not the right one
  int tries_ = 0;
  Milliseconds sent_{0};
  Milliseconds deadline_{0};
};

}  // namespace homewarden::cm11
