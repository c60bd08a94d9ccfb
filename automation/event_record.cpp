#include "automation/event_record.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "core/lines_of_key.h"

namespace homewarden {

std::string EventRecord::once_key() const {
  std::string key = roomdevice;
  for (const std::string* field : {&housecode, &unit, &dim, &time, &action, &freq})
    key += "~" + *field;
  return key;
}

std::string EventRecord::key() const {
  return once_key() + "~" + days;
}

std::string EventRecord::device_label() const {
  return roomdevice + " " + housecode + unit;
}

std::optional<EventFields> split_event(std::string_view line) {
  if (line.size() > kLongestEventLine) return std::nullopt;
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
  if (std::any_of(line.begin(), line.end(), is_control)) return std::nullopt;

  EventFields fields;
  for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
    const auto end = line.find('~');
    if (end == std::string_view::npos) return std::nullopt;
    fields[i] = line.substr(0, end);
    line.remove_prefix(end + 1);
  }
  fields.back() = line;
  if (!to_integer16(fields[2]) || fields[3].find('%') != std::string_view::npos)
    return std::nullopt;
  return fields;
}

EventRecord event_of(const EventFields& fields) {
  const auto text = [&fields](std::size_t i) { return std::string(fields[i]); };
  return {text(0), text(1), text(2), text(3), text(4), text(5), text(6), text(7)};
}

std::optional<EventRecord> parse_event(std::string_view line) {
  const auto fields = split_event(line);
  if (!fields) return std::nullopt;
  return event_of(*fields);
}

ListFile::Choice lines_of_event(std::string_view content, std::string key) {
  return lines_of_key(content, std::move(key));
}

ListFile::Choice lines_of_once_event(std::string_view content, std::string once_key) {
  const auto is_key = [](std::string_view line, std::string_view key) {
    return line.size() > key.size() && line[key.size()] == '~' &&
           equals_ignoring_case(line.substr(0, key.size()), key);
  };
  return lines_of_key(content, std::move(once_key), is_key);
}

}  // namespace homewarden
