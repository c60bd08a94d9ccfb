#pragma once

#include <coroutine>
#include <list>
#include <utility>

#include "base/task.h"
#include "platform/event_loop.h"

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

// One after the other on the power line, in the order of asking: a lamp is dimmed by three
// commands, and another one between them would spoil both.
class LineTurns {
 public:
  explicit LineTurns(EventLoop& loop) : loop_(loop) {}
  LineTurns(const LineTurns&) = delete;
  LineTurns& operator=(const LineTurns&) = delete;

  // At once when nobody has the line. Whoever is destroyed while it waits loses its place and holds
  // up nobody.
  Task<LineTurn> take();

 private:
  friend class LineTurn;
  class Waiting;

  void pass_on();

  EventLoop& loop_;
  bool taken_ = false;
  std::list<Waiting*> waiting_;
};

}  // namespace homewarden
