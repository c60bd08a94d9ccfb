#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "automation/checked_minutes.h"
#include "core/module1.h"

namespace homewarden {

// What is remembered of events in the machine-wide values, for a start after a power cut and for
// whoever takes the house over: which minutes have been dealt with, which events had their turn on
// which day, and which once-events are to be removed.
//
// An event is named by its key, the complete line. A turn is written when its command is out: a
// kill in between lets the event run again, which switches to the same state, rather than not at
// all.
class EventMemory {
 public:
  explicit EventMemory(Module1& module1) : module1_(module1) {}

  // Reads what another run of the program left, once it is known what the disk holds; the turns
  // noted until then are added. Nothing is written before, or it would take the place of that.
  void load();

  // Empty at the very first start.
  const CheckedMinutes& checked() const { return checked_; }
  // Also forgets the turns of days that a wrong clock showed, see last_trusted().
  void set_checked(CheckedMinutes checked);

  // Whether the event had its turn on the day of this minute: it ran, or gave way to a later one of
  // its device when a gap was made good.
  bool had_turn(std::string_view key, Minute due) const;
  // Of the 8 days noted last the turns are kept.
  void note_turn(std::string_view key, Minute due);

  // The keys of once-events that wait for their removal.
  std::vector<std::string> once_events() const;
  void set_once_events(const std::vector<std::string>& keys);

 private:
  using KeyHash = std::uint64_t;
  // In chunks, so that noting one turn of many writes a short text.
  using Chunks = std::vector<std::string>;
  struct Day {
    std::unordered_map<KeyHash, Minute> turns;
    Chunks chunks;
  };

  void read_day(std::chrono::local_days day);
  void note(KeyHash hash, Minute due);
  void write_chunk(std::chrono::local_days day, std::size_t number);
  void write_days();
  void forget_day(std::chrono::local_days day);
  void forget_turns_behind(Minute last);
  std::string read(const std::string& name) const;
  void write(const std::string& name, const std::string& text);

  Module1& module1_;
  bool is_loaded_ = false;
  CheckedMinutes checked_;
  std::vector<std::chrono::local_days> order_;  // in which they were noted
  std::map<std::chrono::local_days, Day> days_;
};

}  // namespace homewarden
