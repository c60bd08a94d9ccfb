#include "platform/cm11/handshake.h"

#include <algorithm>
#include <utility>

namespace homewarden::cm11 {

namespace {

using std::chrono::milliseconds;

// Two bytes at 4800 baud and the delays of a USB adapter stay far below this: an interface that
// answers a header alone was holding another byte.
constexpr milliseconds kProbe{100};
constexpr milliseconds kChecksumLimit{1000};
// After a byte that is not the checksum: the right one may come behind it, if that was noise; if it
// does not, an interface that waits for the second byte of something has given it up.
constexpr milliseconds kQuiet{600};
// Asked again for a checksum that looks like a poll: shorter than the second between two polls.
constexpr milliseconds kDoubt{300};
// An address or a short function takes 0.44 s on a 50 Hz line, and may wait for another controller;
// each step of dimming adds 11 cycles.
constexpr milliseconds kReadyLimit{5000};
constexpr milliseconds kReadyLimitPerStep{11 * 20};
// After 00 something else than ready: an interface that took 00 for half of something transmits
// nothing. If it was noise, ready follows within this time; see Transmission::repeatable.
constexpr milliseconds kReadyAfterNoise{1000};
// No header, and nothing that an interface knows.
constexpr std::uint8_t kFiller = 0xF0;
// The interface repeats its requests once a second: two that are closer are a doubled byte, two
// that are further apart than when one between them was lost are two accidents.
constexpr milliseconds kDoubled{500};
constexpr milliseconds kUnrelated{2500};
constexpr milliseconds kUploadBegins{500};
constexpr milliseconds kUploadGoesOn{300};
constexpr milliseconds kUploadEnds{50};  // of silence after its last byte
constexpr milliseconds kUploadLimit{3000};
// A switch on the wall sends both in one go, and the interface asks once a second.
constexpr milliseconds kFunctionComes{2500};
// A byte this soon after the last one of an upload belongs to it, if one before it was doubled.
constexpr milliseconds kSameUpload{8};
constexpr milliseconds kStatusBegins{700};
constexpr milliseconds kStatusGoesOn{150};
constexpr std::size_t kStatusNoise = 64;  // more than this is no interface
constexpr milliseconds kNoticeLimit{100};
constexpr int kNoticeBytes = 2;

char as_char(std::uint8_t byte) {
  return static_cast<char>(byte);
}

}  // namespace

Handshake::Handshake(std::function<LocalTime()> local_time) : local_time_(std::move(local_time)) {}

bool Handshake::reset() {
  const bool unconfirmed = state_ == State::kConfirmed || interrupted_ == Outcome::kUnknown;
  Handshake fresh(std::move(local_time_));
  fresh.listeners_ = listeners_;
  fresh.listeners_.all_changed();
  fresh.in_step_ = false;
  *this = std::move(fresh);
  return unconfirmed;
}

void Handshake::transmit(const Transmission& transmission, Milliseconds now) {
  transmission_ = transmission;
  careful_ = !in_step_;
  answered_ = false;
  if (!careful_) return write_pair(State::kChecksum, now);
  output_ += as_char(transmission_.header);
  wait(State::kProbe, now + kProbe);
}

void Handshake::request_status(Milliseconds now) {
  output_ += as_char(kStatusRequest);
  status_.clear();
  wait(State::kStatus, now + kStatusBegins);
}

void Handshake::receive(std::string_view bytes, Milliseconds now) {
  for (const char byte : bytes) receive(static_cast<std::uint8_t>(byte), now);
}

void Handshake::receive(std::uint8_t byte, Milliseconds now) {
  if (skip_notice(byte, now)) return;
  switch (state_) {
    case State::kIdle:
      serve(byte, std::nullopt, now);
      break;
    case State::kProbe:
      expect_silence(byte, now);
      break;
    case State::kChecksum:
    case State::kDoubt:
      expect_checksum(byte, now);
      break;
    case State::kConfirmed:
      expect_ready(byte, now);
      break;
    case State::kUpload:
      expect_upload(byte, now);
      break;
    case State::kClock:
      if (const auto end = clock_->receive(byte, local_time_(), now)) end_clock(*end, now);
      break;
    case State::kStatus:
      expect_status(byte, now);
      break;
  }
  follow_clock();
}

// A notice that a macro has run may come at any time and tells us nothing; its two other bytes must
// not be taken for answers. They follow at once.
bool Handshake::skip_notice(std::uint8_t byte, Milliseconds now) {
  if (notice_left_ > 0 && now < notice_until_) {
    --notice_left_;
    return true;
  }
  notice_left_ = 0;
  const bool checksum = state_ == State::kChecksum && byte == transmission_.checksum();
  const bool possible = state_ == State::kIdle || state_ == State::kProbe ||
                        state_ == State::kChecksum || state_ == State::kDoubt ||
                        state_ == State::kConfirmed;
  if (byte != kMacroNotice || checksum || !possible) return false;
  notice_left_ = kNoticeBytes;
  notice_until_ = now + kNoticeLimit;
  return true;
}

// A checksum here says that the interface has taken the header as the end of something older, which
// it now wants to be acknowledged. What it gets instead begins anew with some interfaces and is
// thrown away by others: what did not help is done the other way the next time. Requests, and a
// ready that comes late, say nothing about the header.
void Handshake::expect_silence(std::uint8_t byte, Milliseconds now) {
  if (serve(byte, Outcome::kInterrupted, now)) return;
  if (byte == kClockRequest || byte == kReady) return;
  answered_ = true;
  if (drops_refusals_) output_ += as_char(kFiller);
  write_pair(State::kChecksum, now);
}

void Handshake::expect_checksum(std::uint8_t byte, Milliseconds now) {
  if (byte == transmission_.checksum()) {
    const bool certain = byte != kPoll || transmission_.repeatable || state_ == State::kDoubt;
    return certain ? acknowledge(now) : write_pair(State::kDoubt, now);
  }
  if (serve(byte, Outcome::kInterrupted, now)) return;
  if (state_ == State::kChecksum) deadline_ = std::min(deadline_, now + kQuiet);
}

void Handshake::expect_ready(std::uint8_t byte, Milliseconds now) {
  if (byte == kReady) return confirmed();
  if (byte == kPoll) {
    if (is_repeated(byte, now)) serve(byte, Outcome::kUnknown, now);
  } else if (byte == kClockRequest) {
    serve(byte, Outcome::kUnknown, now);
  } else if (transmission_.repeatable) {
    deadline_ = std::min(deadline_, now + kReadyAfterNoise);
  }
}

void Handshake::expect_upload(std::uint8_t byte, Milliseconds now) {
  if (upload_over_) {
    const auto pause = now - upload_byte_;
    upload_byte_ = now;
    const bool separate = pause >= kSameUpload || !upload_.has_neighbours_alike();
    if ((byte == kPoll || byte == kClockRequest) && separate) {
      end_upload(now);
      return receive(byte, now);
    }
    // One byte too many: something was doubled or slipped in before.
    upload_damaged_ = true;
    deadline_ = std::min(now + kUploadEnds, upload_begun_ + kUploadLimit);
    return;
  }
  upload_byte_ = now;
  switch (upload_.take(byte)) {
    case UploadReader::Progress::kIgnored:
      upload_noise_ = upload_noise_ || (byte != kPoll && byte != kClockRequest);
      break;
    case UploadReader::Progress::kMore:
      deadline_ = now + kUploadGoesOn;
      break;
    case UploadReader::Progress::kDamaged:
      upload_damaged_ = true;
      [[fallthrough]];
    case UploadReader::Progress::kComplete:
      upload_over_ = true;
      deadline_ = now + kUploadEnds;
      break;
  }
}

void Handshake::expect_status(std::uint8_t byte, Milliseconds now) {
  status_ += as_char(byte);
  deadline_ = now + kStatusGoesOn;
  // Polls and clock requests that were under way may stand before the answer.
  if (status_.size() >= kStatusLength &&
      is_plausible_status(std::string_view(status_).substr(status_.size() - kStatusLength)))
    return finish(Outcome::kDone, true);
  if (status_.size() == kStatusNoise) finish(Outcome::kUnanswered, false);
}

void Handshake::advance(Milliseconds now) {
  if (state_ == State::kIdle || now < deadline_) return;
  switch (state_) {
    case State::kIdle:
      break;
    case State::kProbe:
      output_ += as_char(transmission_.code);
      wait(State::kChecksum, now + kChecksumLimit);
      break;
    case State::kChecksum:
      finish(Outcome::kUnanswered, false);
      break;
    case State::kDoubt:
      serve(kPoll, Outcome::kInterrupted, now);
      break;
    case State::kConfirmed:
      finish(Outcome::kUnknown, false);
      break;
    case State::kUpload:
      end_upload(now);
      break;
    case State::kClock:
      if (const auto end = clock_->advance(local_time_(), now)) end_clock(*end, now);
      break;
    case State::kStatus: {
      // A status is 14 bytes; what ends earlier with a request is the request.
      const auto last = static_cast<std::uint8_t>(status_.empty() ? '\0' : status_.back());
      if (!serve(last, Outcome::kInterrupted, now)) finish(Outcome::kUnanswered, false);
      break;
    }
  }
  follow_clock();
}

bool Handshake::is_receiving(Milliseconds now) const {
  return state_ == State::kUpload || (addressed_.is_open() && now - upload_end_ < kFunctionComes);
}

std::optional<Handshake::Milliseconds> Handshake::deadline() const {
  if (state_ == State::kIdle) return std::nullopt;
  return deadline_;
}

std::string Handshake::take_output() {
  return std::exchange(output_, {});
}
std::optional<Outcome> Handshake::take_outcome() {
  return std::exchange(outcome_, std::nullopt);
}
std::vector<Heard> Handshake::take_heard() {
  return std::exchange(heard_, {});
}

void Handshake::write_pair(State next, Milliseconds now) {
  output_ += transmission_.bytes();
  wait(next, now + (next == State::kDoubt ? kDoubt : kChecksumLimit));
}

void Handshake::acknowledge(Milliseconds now) {
  output_ += as_char(kAcknowledge);
  request_ = 0;  // what came before it says nothing about what the interface does now
  if (!transmission_.is_function()) listeners_.sent_address(transmission_.address());
  wait(State::kConfirmed, now + kReadyLimit + kReadyLimitPerStep * transmission_.dim_steps);
}

void Handshake::confirmed() {
  if (transmission_.is_function()) listeners_.sent_function(transmission_.address().house);
  finish(Outcome::kDone, true);
}

// Whether the same request came before, as long ago as the interface takes to repeat it.
bool Handshake::is_repeated(std::uint8_t request, Milliseconds now) {
  const auto since = now - request_time_;
  const bool same = request == request_;
  if (same && since < kDoubled) return false;
  request_ = request;
  request_time_ = now;
  return same && since <= kUnrelated;
}

bool Handshake::serve(std::uint8_t request, std::optional<Outcome> outcome, Milliseconds now) {
  if (request == kPoll) {
    output_ += as_char(kPollAnswer);
    upload_ = UploadReader();
    upload_over_ = upload_damaged_ = upload_noise_ = false;
    upload_begun_ = now;
    wait(State::kUpload, now + kUploadBegins);
  } else if (request == kClockRequest && is_repeated(request, now)) {
    clock_.emplace(local_time_(), now);
    state_ = State::kClock;  // follow_clock() writes and waits
  } else {
    return false;
  }
  interrupted_ = outcome;
  return true;
}

// The interface forgets an upload once it has sent it, whether or not it arrived. One that was cut
// or makes no sense is dropped whole, since nobody can tell which byte is missing; and from then on
// nothing is certain about which units listen. When nothing came at all, C3 was lost: the interface
// keeps its data and polls again.
void Handshake::end_upload(Milliseconds now) {
  upload_end_ = now;
  bool intact = upload_over_ && !upload_damaged_;
  if (intact) counts_what_follows_ = true;
  if (!upload_over_ && !counts_what_follows_) intact = upload_.accept_count_of_all();
  if (intact) {
    for (const Frame& frame : upload_.frames()) {
      listeners_.heard(frame);
      const auto heard = addressed_.take(frame);
      heard_.insert(heard_.end(), heard.begin(), heard.end());
    }
  } else if (upload_.has_begun() || upload_noise_) {
    listeners_.lost_track();
    addressed_.forget();
  }
  finish(std::exchange(interrupted_, std::nullopt), intact);
}

void Handshake::end_clock(ClockSetting::End end, Milliseconds now) {
  output_ += clock_->take_output();
  clock_.reset();
  // Set: what asks now, asks anew.
  if (end != ClockSetting::End::kRefused) request_ = 0;
  // An interface that had no power does not know what went out before.
  listeners_.all_changed();
  if (end == ClockSetting::End::kPolled) {
    serve(kPoll, interrupted_, now);
  } else {
    finish(std::exchange(interrupted_, std::nullopt), end == ClockSetting::End::kAnswered);
  }
}

void Handshake::follow_clock() {
  if (!clock_) return;
  output_ += clock_->take_output();
  deadline_ = clock_->deadline();
}

void Handshake::finish(std::optional<Outcome> outcome, bool in_step) {
  state_ = State::kIdle;
  if (answered_ && !in_step) drops_refusals_ = !drops_refusals_;
  in_step_ = in_step || (careful_ && !answered_);
  answered_ = false;
  careful_ = false;
  if (outcome) outcome_ = outcome;
}

void Handshake::wait(State state, Milliseconds until) {
  state_ = state;
  deadline_ = until;
}

}  // namespace homewarden::cm11
