#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/cm11/clock_setting.h"
#include "platform/cm11/codec.h"
#include "platform/cm11/listeners.h"
#include "platform/cm11/upload.h"

namespace homewarden::cm11 {

// How one attempt at a transmission or a status request has ended.
enum class Outcome {
  kDone,         // transmitted on the power line; the status has come
  kUnanswered,   // no checksum or a wrong one; no status. Nothing was transmitted
  kInterrupted,  // a poll or a clock request came instead and has been served. Nothing was
                 // transmitted
  kUnknown,      // acknowledged with 00, but the interface did not say that it was transmitted
};

// The computer's side of the serial line, byte by byte. Bytes and the time go in; bytes, outcomes
// and commands heard come out. One attempt at a time; trying again is the business of whoever
// asked. Polls, clock requests and notices are served whenever they come, between any two bytes.
//
// A byte that means two things is told apart like this:
// - A checksum that equals a poll, a clock request or a notice is taken as the checksum. If it was
//   something else, the interface does not transmit and asks again, and the outcome is Unknown.
//   Where that may not be (see Transmission::repeatable), a checksum equal to a poll is asked for
//   twice: the interface answers the same two bytes at once, whereas a poll is a second away.
// - A clock request may be noise at any time, and a poll while the interface transmits; they are
//   served when they come again. An interface that transmits does not ask, and the bytes of a clock
//   could be taken for a transmission by one that has not asked.
class Handshake {
 public:
  using Milliseconds = std::chrono::milliseconds;

  // The time that an interface which lost its clock is given.
  explicit Handshake(std::function<LocalTime()> local_time);

  // The line is another one, or was cut: forgets everything but who listens. True when a
  // transmission had been acknowledged with 00 and not been confirmed.
  bool reset();

  // False while an attempt is under way, or a poll or a clock request is served.
  bool idle() const { return state_ == State::kIdle; }

  // While a poll has been answered and its upload is not over, and while an address has been heard
  // whose function is about to come: whoever has the interface then could not tell what it is for.
  bool is_receiving(Milliseconds now) const;

  // Only while idle().
  void transmit(const Transmission& transmission, Milliseconds now);
  void request_status(Milliseconds now);

  // `now` by a clock that never goes back. advance() does nothing before the deadline.
  void receive(std::string_view bytes, Milliseconds now);
  void advance(Milliseconds now);
  // When advance() has to be called next, if nothing comes before; nothing while idle().
  std::optional<Milliseconds> deadline() const;

  // What there is since the last call: bytes to be written, the end of the attempt, commands from
  // the power line in their order. "", nothing and none when there is nothing.
  std::string take_output();
  std::optional<Outcome> take_outcome();
  std::vector<Heard> take_heard();

  // Who listens on the power line, as far as the interface has said.
  Listeners& listeners() { return listeners_; }

 private:
  enum class State {
    kIdle,
    kProbe,      // the header alone has been written
    kChecksum,   // header and code have been written
    kDoubt,      // ... twice, since the checksum looked like a poll
    kConfirmed,  // 00 has been written
    kUpload,     // C3 has been written
    kClock,
    kStatus,
  };

  void receive(std::uint8_t byte, Milliseconds now);
  bool skip_notice(std::uint8_t byte, Milliseconds now);
  void expect_silence(std::uint8_t byte, Milliseconds now);
  void expect_checksum(std::uint8_t byte, Milliseconds now);
  void expect_ready(std::uint8_t byte, Milliseconds now);
  void expect_upload(std::uint8_t byte, Milliseconds now);
  void expect_status(std::uint8_t byte, Milliseconds now);

  void write_pair(State next, Milliseconds now);
  void acknowledge(Milliseconds now);
  void confirmed();
  bool is_repeated(std::uint8_t request, Milliseconds now);
  // Serves a poll or clock request; `outcome` is that of the attempt it came upon. False when the
  // byte is neither.
  bool serve(std::uint8_t request, std::optional<Outcome> outcome, Milliseconds now);
  void end_upload(Milliseconds now);
  void end_clock(ClockSetting::End end, Milliseconds now);
  void follow_clock();
  void finish(std::optional<Outcome> outcome, bool in_step);
  void wait(State state, Milliseconds until);

  std::function<LocalTime()> local_time_;
  State state_ = State::kIdle;
  Milliseconds deadline_{0};
  Transmission transmission_;
  // What finish() reports when the poll or clock request that is being served has ended.
  std::optional<Outcome> interrupted_;
  // False when the interface may be holding half a transmission: then the next header goes out
  // alone. That is done every other time only, for an interface that wants both bytes together.
  bool in_step_ = true;
  bool careful_ = false;
  bool answered_ = false;        // the header alone got an answer in this attempt
  bool drops_refusals_ = false;  // this interface throws away what it gets instead of 00

  std::uint8_t request_ = 0;  // the last one that may have been noise
  Milliseconds request_time_{0};
  int notice_left_ = 0;
  Milliseconds notice_until_{0};

  UploadReader upload_;
  bool upload_over_ = false;  // as many bytes as announced; nothing may follow them at once
  bool upload_damaged_ = false;
  bool upload_noise_ = false;         // bytes came that are no upload
  bool counts_what_follows_ = false;  // this interface's count has been seen not to include itself
  Milliseconds upload_begun_{0};
  Milliseconds upload_end_{0};
  Milliseconds upload_byte_{0};  // when the last one came
  std::optional<ClockSetting> clock_;
  std::string status_;

  AddressedUnits addressed_;
  Listeners listeners_;
  std::string output_;
  std::optional<Outcome> outcome_;
  std::vector<Heard> heard_;
};

}  // namespace homewarden::cm11
