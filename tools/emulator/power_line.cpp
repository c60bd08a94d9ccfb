#include "tools/emulator/power_line.h"

#include <algorithm>
#include <utility>

#include "platform/interface_control.h"

namespace homewarden::emulator {

namespace {

// One bit takes one cycle of the mains, and a frame is sent twice: 2 start, 4 house and 5 key bits.
constexpr int kFrameCycles = 11;

// An extended frame has 4 unit, 8 data and 8 command bits more.
constexpr int kExtendedFrameCycles = 31;

std::chrono::milliseconds to_milliseconds(Microseconds time) {
  return std::chrono::round<std::chrono::milliseconds>(time);
}

}  // namespace

int line_cycles(const Transmission& what) {
  if (!what.extended.empty()) return 2 * kExtendedFrameCycles;
  // Dim and Bright frames follow each other without a gap, one for each step but two at least.
  if (what.function && (what.code == kX10Dim || what.code == kX10Bright))
    return kFrameCycles * std::max(what.steps, 2);
  return 2 * kFrameCycles;
}

PowerLine::PowerLine(Agenda& agenda, int mains_hertz, double speed)
    : agenda_(agenda), mains_hertz_(mains_hertz), speed_(speed) {}

Microseconds PowerLine::mains_cycles(int count) const {
  return Microseconds(std::int64_t{1'000'000} * count / mains_hertz_);
}

Microseconds PowerLine::scaled(Microseconds mains_time) const {
  if (speed_ <= 0) return Microseconds(0);
  return std::chrono::round<Microseconds>(mains_time / speed_);
}

Microseconds PowerLine::take_line(const Transmission& what) {
  Microseconds start = agenda_.now();
  const Microseconds quiet_until = last_end_ + scaled(mains_cycles(kQuietCycles));
  if (used_ && start <= quiet_until) {
    start = quiet_until;
    mains_time_ += mains_cycles(kQuietCycles);
  }
  used_ = true;
  mains_time_ += mains_cycles(line_cycles(what));
  return start;
}

void PowerLine::occupy(const Transmission& what, std::function<void(Microseconds)> at_end) {
  const Microseconds start = take_line(what);
  const Microseconds end = start + scaled(mains_cycles(line_cycles(what)));
  agenda_.after(end - agenda_.now(), [this, start, at_end = std::move(at_end)] {
    last_end_ = agenda_.now();
    at_end(start);
  });
}

void PowerLine::send(const Transmission& what, std::function<void()> done) {
  computer_holds_ = true;
  occupy(what, [this, what, done = std::move(done)](Microseconds start) {
    computer_holds_ = false;
    finish(what, false, start);
    done();
    start_remote();
  });
}

void PowerLine::collide(const Transmission& what, std::function<void()> done) {
  computer_holds_ = true;
  occupy(what, [this, done = std::move(done)](Microseconds) {
    computer_holds_ = false;
    done();
    start_remote();
  });
}

void PowerLine::send_remote(std::vector<Transmission> what) {
  remotes_.push_back(std::move(what));
  start_remote();
}

void PowerLine::start_remote() {
  if (computer_holds_ || remote_holds_ || remotes_.empty()) return;
  remote_holds_ = true;
  if (on_remote_begins) on_remote_begins();
  continue_remote();
}

void PowerLine::continue_remote() {
  auto& keys = remotes_.front();
  if (keys.empty()) {
    remotes_.pop_front();
    remote_holds_ = false;
    start_remote();
    return;
  }
  const Transmission what = keys.front();
  keys.erase(keys.begin());
  occupy(what, [this, what](Microseconds start) {
    finish(what, true, start);
    continue_remote();
  });
}

void PowerLine::finish(const Transmission& what, bool from_remote, Microseconds start) {
  LineFrame frame;
  frame.start = to_milliseconds(start);
  frame.end = to_milliseconds(agenda_.now());
  frame.from_remote = from_remote;
  frame.what = what;
  frame.duplicate = !from_remote && !frames_.empty() && frames_.back().what == what;
  frames_.push_back(frame);
  if (on_frame) frames_.back().modules = on_frame(what, from_remote);
}

}  // namespace homewarden::emulator
