#pragma once

#include <array>
#include <coroutine>
#include <list>
#include <utility>

#include "base/task.h"
#include "platform/event_loop.h"
#include "x10/device_state.h"

namespace homewarden {

class LineTurns;

// The right to send on the power line, until it is released or goes.
class LineTurn {
 public:
  explicit LineTurn(LineTurns& turns) : turns_(&turns) {}
  LineTurn(LineTurn&& other) noexcept : turns_(std::exchange(other.turns_, nullptr)) {}
  LineTurn(const LineTurn&) = delete;
  LineTurn& operator=(const LineTurn&) = delete;
  LineTurn& operator=(LineTurn&&) = delete;
  ~LineTurn() { release(); }

  // The next one goes on from the loop, not from inside this call. A second call does nothing.
  void release();

 private:
  LineTurns* turns_;
};

// One after the other on the power line: a lamp is dimmed by three commands, and another one
// between them would spoil both.
//
// Those who wait take turns by where they come from, whoever has gone longest without one first;
// within one source the first to ask goes first. Neither a person at the window nor an event waits
// behind more than one command of the web.
class LineTurns {
 public:
  explicit LineTurns(EventLoop& loop) : loop_(loop) {}
  LineTurns(const LineTurns&) = delete;
  LineTurns& operator=(const LineTurns&) = delete;

  // Stands for a moment: how many turns of the web were over.
  using Moment = unsigned long;
  Moment now() const { return holder_is_web() ? web_turns_ - 1 : web_turns_; }
  // How many turns have begun, whoever's.
  unsigned long count() const { return turns_; }

  // At once when nobody has the line. Whoever is destroyed while it waits loses its place and holds
  // up nobody. `since` is when the wait began, for somebody who asks later than that.
  Task<LineTurn> take(Source source) { return take(source, now()); }
  Task<LineTurn> take(Source source, Moment since);

 private:
  friend class LineTurn;
  class Waiting;

  bool holder_is_web() const { return taken_ && holder_ == Source::kWeb; }
  void give_to(Source source);
  Waiting* next() const;
  void pass_on();

  EventLoop& loop_;
  bool taken_ = false;
  Source holder_ = Source::kWindow;  // while it is taken
  std::list<Waiting*> waiting_;      // in the order of asking
  unsigned long turns_ = 0;
  unsigned long web_turns_ = 0;  // that have begun
  std::array<unsigned long, kSources> last_turn_{};
};

}  // namespace homewarden
