#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/event_record.h"
#include "automation/next_run.h"
#include "automation/off_events.h"
#include "base/json.h"
#include "core/house_index.h"
#include "platform/clock.h"

namespace homewarden {

// What a program is told of the timed events of the active profile.
class EventAnswers {
 public:
  // What programs call a device of the house.
  using DeviceId = std::function<std::string(const Device&)>;

  EventAnswers(OffEvents& events, const HouseIndex& house, const Clock& clock, SunTimesOf sun_times,
               DeviceId id_of);

  // Those that are on by their next run, then those that will not run, then those that are off.
  // Nothing when the files cannot be read.
  std::optional<Json::Array> all() const;
  // The next ones that will run, as many at most; none when the files cannot be read.
  Json::Array next(std::size_t at_most) const;
  // Nothing when there is no such event, or the files cannot be read.
  std::optional<OffEvents::Entry> find(std::string_view id) const;

  Json json_of(const OffEvents::Entry& entry) const;
  const Device* device_of(const EventRecord& event) const;

 private:
  struct Planned;
  std::optional<std::vector<Planned>> planned() const;
  Planned plan(const OffEvents::Entry& entry, Minute now, const SunTimesOf& sun_times) const;

  OffEvents& events_;
  const HouseIndex& house_;
  const Clock& clock_;
  SunTimesOf sun_times_;
  DeviceId id_of_;
};

// What programs call an event: of its line alone, so that it stays in another profile, off or on.
std::string event_id(const EventRecord& event);

}  // namespace homewarden
