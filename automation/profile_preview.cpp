#include "automation/profile_preview.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "automation/event_faces.h"
#include "base/lines.h"
#include "core/dates.h"

namespace homewarden {
namespace {

constexpr std::size_t kEventsShown = 8;
constexpr int kMinute = 60000;

std::string counted(std::size_t events) {
  return std::to_string(events) + (events == 1 ? " event" : " events");
}

// The devices, each once, in the order of their events.
std::string devices_of(const std::vector<EventFace>& events) {
  std::vector<std::string> names;
  for (const EventFace& event : events)
    if (std::find(names.begin(), names.end(), event.device) == names.end())
      names.push_back(event.device);
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

}  // namespace

ProfilePreview::ProfilePreview(ProfilePanel& panel, EventPanel& events, HouseIndex& house,
                               const Clock& clock, const ProfileSwitch& profiles,
                               SunTimesOf sun_times)
    : panel_(panel),
      house_(house),
      clock_(clock),
      profiles_(profiles),
      sun_times_(std::move(sun_times)) {
  panel.Frame5.visible.changed.connect([this] { begin(); });
  panel.profileclock.tick.connect([this] { read_all(); });
  events.ListView1.rows.changed.connect([this] { read_all(); });
  house.changed.connect([this] { read_all(); });
  panel.profile_seen.changed.connect([this] { show_seen(); });
  panel.cmd_switchprofile.click.connect([this] {
    const int seen = panel_.profile_seen;
    if (seen < 0) return;
    panel_.com_profile.text = panel_.profilefaces.get()[static_cast<std::size_t>(seen)].name;
    panel_.com_profile.click();
  });
}

void ProfilePreview::begin() {
  panel_.profileclock.set_interval(panel_.Frame5.visible ? kMinute : 0);
  panel_.profile_seen = -1;
  panel_.profile_open = false;
  read_all();
}

void ProfilePreview::read_all() {
  if (!panel_.Frame5.visible) return;
  const SunTimesOf sun_times = remembered(sun_times_);
  std::vector<ProfileFace> faces;
  for (const std::string& name : panel_.com_profile.items.get())
    faces.push_back(face_of(name, sun_times));
  panel_.lab_profileactive.caption = profiles_.active() + " is active";
  panel_.profilefaces = std::move(faces);
  show_seen();
}

ProfileFace ProfilePreview::face_of(const std::string& profile, const SunTimesOf& sun_times) const {
  const Minute now = minute_of(clock_.local_time());
  std::vector<PlannedEvent> planned;
  const auto content = profiles_.events_of(profile);
  LineReader reader(content ? *content : std::string_view());
  while (const auto line = reader.next())
    if (const auto event = parse_event(*line))
      planned.push_back(plan_of(*event, house_, now, sun_times));
  ProfileFace face;
  face.name = profile;
  face.active = profile == profiles_.active();
  const std::size_t count = planned.size();
  face.events = by_next_run(std::move(planned), now);
  face.summary = count == 0 ? "No events yet" : counted(count) + ": " + devices_of(face.events);
  if (count > 0 && face.active && face.events.front().warning.empty())
    face.summary = counted(count) + ": next at " + face.events.front().time;
  if (face.events.size() > kEventsShown) face.events.resize(kEventsShown);
  return face;
}

void ProfilePreview::show_seen() {
  const auto& faces = panel_.profilefaces.get();
  const auto seen = static_cast<std::size_t>(panel_.profile_seen.get());
  const bool is_one = panel_.profile_seen >= 0 && seen < faces.size();
  panel_.cmd_switchprofile.visible = is_one && !faces[seen].active;
  if (!is_one) {
    panel_.lab_profileseen.caption = "What a profile holds";
    panel_.lab_profilenote.caption = "Choose one to see what it will do before you switch to it.";
    return;
  }
  panel_.lab_profileseen.caption = faces[seen].name;
  panel_.cmd_switchprofile.caption = "Switch to " + faces[seen].name;
  if (faces[seen].active) {
    panel_.lab_profilenote.caption = "This profile is active.";
    return;
  }
  const std::string active = profiles_.active();
  const std::string empty =
      faces[seen].events.empty() ? faces[seen].name + " holds no events yet. " : "";
  panel_.lab_profilenote.caption = empty + "The events of " + active +
                                   " are put away and come back when you choose " + active +
                                   " again.";
}

}  // namespace homewarden
