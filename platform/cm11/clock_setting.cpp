#include "platform/cm11/clock_setting.h"

#include <utility>

#include "platform/cm11/codec.h"

namespace homewarden::cm11 {

namespace {

using std::chrono::milliseconds;

constexpr int kMaxTries = 4;
// Longer than the second between two requests: when it passes, the requests have ceased.
constexpr milliseconds kAnswerLimit{1300};
// After a byte that is not the right checksum: the right one may come behind it, if that was noise.
constexpr milliseconds kQuiet{200};
// A request sooner than this after the clock has crossed with it on the line, or is a doubled byte.
constexpr milliseconds kCrossing{500};

}  // namespace

ClockSetting::ClockSetting(const LocalTime& local_time, Milliseconds now) {
  send(local_time, now);
}

std::optional<ClockSetting::End> ClockSetting::send(const LocalTime& local_time, Milliseconds now) {
  if (tries_ == kMaxTries) return End::kRefused;
  ++tries_;
  const std::string bytes = clock_bytes(local_time);
  expected_ = clock_checksum(bytes);
  output_ += bytes;
  acknowledged_ = wrong_ = false;
  sent_ = now;
  deadline_ = now + kAnswerLimit;
  return std::nullopt;
}

std::optional<ClockSetting::End> ClockSetting::receive(std::uint8_t byte,
                                                       const LocalTime& local_time,
                                                       Milliseconds now) {
  // A checksum that looks like a request or a poll is taken as the checksum: if it was not, the 00
  // does no harm, and the request or poll comes again.
  if (!acknowledged_ && byte == expected_) {
    output_ += static_cast<char>(kAcknowledge);
    acknowledged_ = true;
    deadline_ = now + kAnswerLimit;
    return std::nullopt;
  }
  if (byte == kReady) return End::kAnswered;
  if (byte == kPoll) return End::kPolled;
  if (byte == kClockRequest) return now - sent_ < kCrossing ? std::nullopt : send(local_time, now);
  if (!acknowledged_) {
    wrong_ = true;
    deadline_ = now + kQuiet;
  }
  return std::nullopt;
}

std::optional<ClockSetting::End> ClockSetting::advance(const LocalTime& local_time,
                                                       Milliseconds now) {
  if (now < deadline_) return std::nullopt;
  return wrong_ ? send(local_time, now) : End::kSilent;
}

std::string ClockSetting::take_output() {
  return std::exchange(output_, {});
}

}  // namespace homewarden::cm11
