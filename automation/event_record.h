#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/list_file.h"

namespace homewarden {

// A timed event: one line of the event list. All fields are texts as they stand in the file; what
// each may hold is written down in docs/data-files.md.
struct EventRecord {
  std::string roomdevice;  // "Kitchen Table Lamp"
  std::string housecode;   // "A"
  std::string unit;        // "3"; a 16-bit integer
  std::string dim;         // "40"; one blank for an event that switches off
  std::string time;        // "07:30", "sRise:-1", "sSet:00"
  std::string action;      // "on" or "off"
  std::string freq;        // "once" or "daily"
  std::string days;        // letters of "mtwufsr"

  // The complete line, by which the event is found in the file again; all eight fields stand in it,
  // empty ones too.
  std::string key() const;
  // The line without its days and the tilde before them: names a once-event that has come due.
  std::string once_key() const;
  // "Kitchen Table Lamp A3", as the device lists of the editors name it.
  std::string device_label() const;

  bool operator==(const EventRecord&) const = default;
};

// The letters of `days`, Monday first.
inline constexpr std::string_view kDayLetters = "mtwufsr";

// The fields of a line, pointing into it: the last one is everything behind the seventh tilde.
using EventFields = std::array<std::string_view, 8>;

inline constexpr std::size_t kLongestEventLine = 1024;

// Nothing for a line that is no event: fewer than eight fields, a unit that is no 16-bit integer,
// control characters, more than kLongestEventLine bytes, a percent sign in the level.
std::optional<EventFields> split_event(std::string_view line);

EventRecord event_of(const EventFields& fields);
// Nothing for the same lines. What comes back may still be an event that never runs.
std::optional<EventRecord> parse_event(std::string_view line);

// The lines of an event list that a key names: those that are the event, or, without one, those
// that contain it. The key of a once-event has no days; a line with any days is it. An empty key
// names none.
ListFile::Choice lines_of_event(std::string_view content, std::string key);
ListFile::Choice lines_of_once_event(std::string_view content, std::string once_key);

}  // namespace homewarden
