#include "api/automation_changes.h"

#include <utility>

#include "api/sun_now.h"
#include "base/code_page.h"

namespace homewarden {

AutomationChanges::AutomationChanges(ChangeLog& log, const EventAnswers& events,
                                     const MacroAnswers& macros, OffEvents& off,
                                     const ProfileSwitch& profiles, ProfileChange& change,
                                     InterfaceNow& interface, const Location& location,
                                     const Clock& clock, HouseIndex& house, EventPanel& event_panel,
                                     MacroPanel& macro_panel, OptionsPanel& options)
    : log_(log),
      event_answers_(events),
      macro_answers_(macros),
      profiles_(profiles),
      interface_(interface),
      location_(location),
      options_(options),
      clock_(clock) {
  event_panel.ListView1.rows.changed.connect([this] { look_at_events(); });
  off.changed.connect([this] { look_at_events(); });
  macro_panel.ListVIew2.items.changed.connect([this] { look_at_macros(); });
  house.changed.connect([this] {
    look_at_events();
    look_at_macros();
  });
  change.changed.connect([this] {
    look_at_profile();
    look_at_events();
  });
  options.lab_sunset.caption.changed.connect([this] {
    look_at_sun();
    look_at_events();
  });
  interface_json_ = interface.json();
  interface.changed.connect([this] { look_at_interface(); });
}

void AutomationChanges::look() {
  const bool first = !std::exchange(begun_, true);
  if (first) {
    events_ = event_answers_.all();
    macros_ = macro_answers_.all();
    profile_ = profiles_.active();
    sun_ = sun_now(location_, options_, clock_);
    return;
  }
  look_at_events();
  look_at_macros();
  look_at_profile();
  look_at_sun();
}

void AutomationChanges::look_at_events() {
  if (!begun_) return;
  Seen now = event_answers_.all();
  if (now == events_) return;
  events_ = std::move(now);
  log_.publish("events", Json::Object{});
}

void AutomationChanges::look_at_macros() {
  if (!begun_) return;
  Seen now = macro_answers_.all();
  if (now == macros_) return;
  macros_ = std::move(now);
  log_.publish("macros", Json::Object{});
}

void AutomationChanges::look_at_profile() {
  std::string now = profiles_.active();
  if (!begun_ || now == profile_) return;
  profile_ = std::move(now);
  log_.publish("profile", Json::Object{{"active", to_utf8(profile_)}});
}

void AutomationChanges::look_at_sun() {
  if (!begun_) return;
  Json now = sun_now(location_, options_, clock_);
  if (now == sun_) return;
  sun_ = std::move(now);
  log_.publish("sun", Json::Object{});
}

// From the start: a page that waits for the program reads the house before its lists are there.
void AutomationChanges::look_at_interface() {
  Json now = interface_.json();
  if (now == interface_json_) return;
  interface_json_ = std::move(now);
  log_.publish("interface", interface_json_);
}

}  // namespace homewarden
