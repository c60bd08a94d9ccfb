#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

#include "platform/store/values.h"

namespace homewarden::store {

// What the program's thread and the one that does the disk's work hand to each other. The lock is
// held for moments only, never while the disk works.
struct Exchange {
  std::mutex lock;

  // From the program, with a nudge.
  std::condition_variable nudge;
  Changes waiting;             // recorded and not on the disk yet
  bool asked_to_look = false;  // whether another process has changed something
  int flushing = 0;            // who waits for the disk: it is tried more often
  bool stop = false;

  // From the writer.
  std::condition_variable progress;
  StoreState state;
  std::chrono::steady_clock::time_point waiting_since;  // of the oldest of `waiting`
  std::optional<Values> found;  // what the file holds, with all that has been written since
  // The file was missing, damaged or replaced: what is known and not in `found` is wanted again.
  bool is_another_file = false;
  // What was written last may be lost: what is known counts more than what is in `found`.
  bool is_stale = false;
  std::atomic<bool> has_news = false;  // `found` is there to be taken
  bool ended = false;

  // Called by the writer after each change of the state, and with news; not with the lock held.
  std::function<void()> tell;
};

}  // namespace homewarden::store
