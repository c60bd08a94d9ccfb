#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "platform/event_loop.h"

namespace homewarden::testing {

// An event loop whose time is moved by the test: it runs a whole day of the house in milliseconds
// and in a repeatable order. The wall clock runs along with uptime() and can be set apart from it.
class VirtualLoop : public EventLoop {
 public:
  using Milliseconds = std::chrono::milliseconds;

  // Starts on Wednesday, 21 June 2023, at midnight.
  VirtualLoop() = default;

  Milliseconds uptime() const override { return now_; }

  // The house lies where the wall clock shows UTC.
  SystemTime system_time() const override { return SystemTime(wall_offset_ + now_); }

  LocalTime local_time() const override {
    using namespace std::chrono;
    const auto wall = system_time();
    const auto today = floor<days>(wall);
    const year_month_day date(today);
    const std::chrono::hh_mm_ss<milliseconds> time(wall - today);
    LocalTime local;
    local.year = static_cast<int>(date.year());
    local.month = static_cast<int>(static_cast<unsigned>(date.month()));
    local.day = static_cast<int>(static_cast<unsigned>(date.day()));
    local.hour = static_cast<int>(time.hours().count());
    local.minute = static_cast<int>(time.minutes().count());
    local.second = static_cast<int>(time.seconds().count());
    local.millisecond = static_cast<int>(time.subseconds().count());
    local.weekday = static_cast<int>(weekday(today).c_encoding());
    local.year_day = static_cast<int>((today - sys_days(date.year() / 1 / 1)).count());
    return local;
  }

  CallId call_after(Milliseconds delay, std::function<void()> function) override {
    const CallId id = ++last_id_;
    calls_.emplace(Due{now_ + std::max(delay, Milliseconds(0)) + lateness, id},
                   std::move(function));
    return id;
  }

  void cancel(CallId id) override {
    std::erase_if(calls_, [id](const auto& call) { return call.first.second == id; });
  }

  void quit() override { quit_ = true; }
  bool has_quit() const { return quit_; }
  // For the next program on it.
  void start_again() { quit_ = false; }

  // Sets the wall clock without touching uptime().
  void set_wall_clock(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                      int millisecond = 0) {
    using namespace std::chrono;
    const sys_days date = std::chrono::year(year) / month / day;
    wall_offset_ = date.time_since_epoch() + hours(hour) + minutes(minute) + seconds(second) +
                   milliseconds(millisecond) - now_;
  }

  // Runs everything that comes due within `length`, and moves the time by it.
  void advance(Milliseconds length) {
    const Milliseconds end = now_ + length;
    while (!quit_ && !calls_.empty() && calls_.begin()->first.first <= end) {
      auto call = calls_.extract(calls_.begin());
      now_ = std::max(now_, call.key().first);
      call.mapped()();
    }
    now_ = end;
  }

  // Runs what is pending now and whatever that makes pending, without moving the time.
  void run_pending() { advance(Milliseconds(0)); }

  // Advances until `done` says so or `limit` has passed; false in the second case.
  bool advance_until(const std::function<bool()>& done, Milliseconds limit) {
    const Milliseconds end = now_ + limit;
    while (!done()) {
      if (quit_ || calls_.empty() || calls_.begin()->first.first > end) return false;
      auto call = calls_.extract(calls_.begin());
      now_ = std::max(now_, call.key().first);
      call.mapped()();
    }
    return true;
  }

  // How long after they are due calls are delivered.
  Milliseconds lateness{0};

  std::size_t pending_calls() const { return calls_.size(); }

 private:
  using Due = std::pair<Milliseconds, CallId>;

  Milliseconds now_{0};
  Milliseconds wall_offset_ =
      std::chrono::sys_days(std::chrono::year(2023) / 6 / 21).time_since_epoch();
  CallId last_id_ = 0;
  std::map<Due, std::function<void()>> calls_;
  bool quit_ = false;
};

}  // namespace homewarden::testing
