#include "automation/event_outlook.h"

#include <utility>
#include <variant>

#include "automation/event_input.h"
#include "automation/event_list.h"
#include "automation/event_words.h"
#include "core/dates.h"

namespace homewarden {
namespace {

constexpr int kMinute = 60000;

}  // namespace

EventOutlook::EventOutlook(EventPanel& panel, HouseIndex& house, const Clock& clock,
                           SunTimesOf sun_times, ProfileName profile)
    : panel_(panel),
      house_(house),
      clock_(clock),
      sun_times_(std::move(sun_times)),
      known_sun_(remembered(sun_times_)),
      profile_(std::move(profile)) {
  follow_controls();
  panel.frm_event.visible.changed.connect([this] {
    panel_.eventclock.set_interval(panel_.frm_event.visible ? kMinute : 0);
    refresh();
  });
  panel.eventclock.tick.connect([this] { refresh(); });
}

void EventOutlook::follow_controls() {
  panel_.ListView1.rows.changed.connect([this] { show_list(); });
  house_.changed.connect([this] { show_list(); });
  panel_.txt_eventfilter.text.changed.connect([this] { order(); });
  panel_.lst_eventorder.text.changed.connect([this] { order(); });
  for (ComboBox* box : {&panel_.lst_eventdevice, &panel_.lst_action, &panel_.lst_dim,
                        &panel_.lst_hour, &panel_.lst_min, &panel_.lst_freq})
    box->text.changed.connect([this] { show_sentence(); });
  for (CheckBox& day : panel_.days) day.click.connect([this] { show_sentence(); });
}

void EventOutlook::refresh() {
  if (!panel_.frm_event.visible) return;
  known_sun_ = remembered(sun_times_);
  show_list();
  show_sentence();
}

void EventOutlook::show_list() {
  if (!panel_.frm_event.visible) return;
  const Minute now = minute_of(clock_.local_time());
  const auto& rows = panel_.ListView1.rows.get();
  planned_.clear();
  planned_.reserve(rows.size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    planned_.push_back(plan_of(event_in(rows[row]), house_, now, known_sun_));
    planned_.back().face.row = static_cast<int>(row);
  }
  order();
}

void EventOutlook::order() {
  if (!panel_.frm_event.visible) return;
  const Minute now = minute_of(clock_.local_time());
  const std::string& wanted = panel_.lst_eventorder.text.get();
  std::vector<EventFace> faces = wanted == kByDevice ? by_device(planned_, now)
                                 : wanted == kByRoom ? by_room(planned_, now)
                                                     : by_next_run(planned_, now);
  const std::string filter = panel_.txt_eventfilter.text;
  std::erase_if(faces, [&filter](const EventFace& face) { return !lets_through(filter, face); });
  panel_.lab_nomatch.visible = faces.empty() && !planned_.empty();
  panel_.eventfaces = std::move(faces);
  panel_.lab_eventcount.caption = count_text();
}

std::string EventOutlook::count_text() const {
  const auto count = planned_.size();
  const auto shown = panel_.eventfaces.get().size();
  const std::string of_all = shown == count ? "" : std::to_string(shown) + " of ";
  return of_all + std::to_string(count) + (count == 1 ? " event" : " events") + " in the profile " +
         profile_();
}

// What is no event yet says what is missing, in the words with which Save would refuse it.
void EventOutlook::show_sentence() {
  if (!panel_.frm_event.visible) return;
  const CheckedInput checked = check_input(input_in(panel_));
  const auto* event = std::get_if<EventRecord>(&checked);
  if (!event) {
    panel_.lab_sentence.caption = std::get<std::string>(checked);
    panel_.lab_nextrun.caption = "";
    return;
  }
  const Minute now = minute_of(clock_.local_time());
  const PlannedEvent planned = plan_of(*event, house_, now, known_sun_);
  panel_.lab_sentence.caption = event_in_words(*event, planned.face.device) + ".";
  panel_.lab_nextrun.caption = planned.next ? "Next: " + day_in_words(*planned.next, now) + " at " +
                                                  clock_in_words(*planned.next)
                                            : planned.face.warning;
}

}  // namespace homewarden
