#include "automation/scheduler.h"

#include <algorithm>
#include <utility>

#include "automation/due_time.h"
#include "base/lines.h"
#include "base/text.h"
#include "core/dates.h"
#include "core/settings.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr int kInterval = 60000;
constexpr int kLinesPerTurn = 4096;  // a few milliseconds, so that the window stays alive

std::string caught_up_text(const std::vector<MinuteCheck>& minutes, int events) {
  const std::size_t last_skipped = minutes.size() - 2;
  return "Caught up " + std::to_string(events) + (events == 1 ? " event" : " events") +
         " of the time from " + hh_mm(minutes.front().minute) + " to " +
         hh_mm(minutes[last_skipped].minute) + ", which the clock skipped";
}

}  // namespace

// Holds `filebusy` as long as one of these lives: passes only read, so they share it.
class Scheduler::FilesInUse {
 public:
  explicit FilesInUse(Scheduler& scheduler) : scheduler_(&scheduler) {
    if (scheduler.passes_++ == 0) scheduler.form_.filebusy = true;
  }
  FilesInUse(FilesInUse&& other) noexcept : scheduler_(std::exchange(other.scheduler_, nullptr)) {}
  FilesInUse(const FilesInUse&) = delete;
  FilesInUse& operator=(const FilesInUse&) = delete;
  FilesInUse& operator=(FilesInUse&&) = delete;
  ~FilesInUse() {
    if (scheduler_ && --scheduler_->passes_ == 0) scheduler_->form_.filebusy = false;
  }

 private:
  Scheduler* scheduler_;
};

// The place of a pass that waits for the files, so that the minutes keep their order.
class Scheduler::Turn {
 public:
  explicit Turn(std::list<Turn*>& waiting) : waiting_(waiting) { waiting_.push_back(this); }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  ~Turn() { waiting_.remove(this); }

  bool is_next() const { return waiting_.front() == this; }

 private:
  std::list<Turn*>& waiting_;
};

Scheduler::Scheduler(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
                     ListFile& events, DeviceCommands& commands, DeviceState& state,
                     DevicePanel& devices)
    : form_(form),
      loop_(loop),
      module1_(module1),
      events_(events),
      commands_(commands),
      state_(state),
      devices_(devices) {
  form.eventtimer.tick.connect([this, &operations] { operations.start(eventtimer_run()); });
}

Task<void> Scheduler::eventtimer_run() {
  form_.eventtimer.set_interval(kInterval);
  const std::string installing =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "installing", "False");
  if (installing == "True") {
    form_.close_requested();
    co_return;
  }
  const Minute now = minute_of(loop_.local_time());
  auto minutes = minutes_to_check(checked_, now);
  checked_ = with_checked(std::move(checked_), now);
  co_await check(std::move(minutes));
}

Task<void> Scheduler::check(std::vector<MinuteCheck> minutes) {
  int carried_out = 0;
  for (std::size_t i = 0; i < minutes.size(); ++i) {
    const int events = co_await pass(minutes[i]);
    if (i + 1 < minutes.size()) carried_out += events;
  }
  if (minutes.size() > 1) form_.Statusbar.panel2 = caught_up_text(minutes, carried_out);
}

// The number of events that were carried out.
Task<int> Scheduler::pass(MinuteCheck check) {
  // A profile that is being changed to may bring a list.
  if (!events_.exists() && !form_.filebusy) co_return no_events();
  const FilesInUse files = co_await take_files();
  if (!events_.exists()) co_return no_events();
  form_.Statusbar.panel2 = "Timer, Loading rooms list";
  const auto content = events_.content();
  if (!content) {
    form_.Statusbar.panel2 = "Timer, the event list evelst.hwd cannot be read";
    co_return 0;
  }
  co_return co_await look_for_events(check, *content);
}

int Scheduler::no_events() {
  form_.Statusbar.panel2 = "Timer running, no events to run.";
  return 0;
}

Task<Scheduler::FilesInUse> Scheduler::take_files() {
  const Turn turn(waiting_);
  while (!turn.is_next() || (form_.filebusy && passes_ == 0)) co_await module1_.pause(2);
  co_return FilesInUse(*this);
}

Task<int> Scheduler::look_for_events(MinuteCheck check, std::string_view lines) {
  int carried_out = 0;
  const int now = minute_of_day(check.minute);
  LineReader reader(lines);
  for (int number = 1;; ++number) {
    const auto line = reader.next();
    if (!line) co_return carried_out;
    if (number % kLinesPerTurn == 0) co_await pending_events(loop_);
    const auto fields = split_event(*line);
    if (!fields) continue;
    const auto due = due_minute((*fields)[4], form_.sunrise_time, form_.sunset_time);
    if (due != now) continue;
    EventRecord event = event_of(*fields);
    const bool is_once = event.freq == "once";
    if (check.repeated && (!is_once || is_queued(event))) continue;
    const bool ran = co_await carry_out(event, check.minute, now);
    if (ran) ++carried_out;
    if (is_once) queue_removal(event);
  }
}

// False, with nothing sent, on a day that is not the event's and for an event without an address or
// a level.
Task<bool> Scheduler::carry_out(EventRecord event, Minute minute, int due) {
  form_.Statusbar.panel2 = "Timer, found match with " + hh_mm(due) + " and " + hh_mm(minute);
  if (!contains_ignoring_case(event.days, std::string(1, weekday_letter(minute)))) co_return false;
  if (!why_never_run(event).empty()) co_return false;

  const int unit = to_integer16(event.unit).value_or(0);
  int level = 0;
  if (event.action == "on") {
    level = event_level(event).value_or(0);
    co_await commands_.turnon(event.housecode, unit, level);
    state_.setstatus(event.roomdevice, "on", level);
  } else {
    co_await commands_.turnoff(event.housecode, unit);
    state_.setstatus(event.roomdevice, "off", level);
  }
  refresh_panel(event, level);
  co_return true;
}

// Each slot that shows the device records the state once more, with the level that the time before
// left.
void Scheduler::refresh_panel(const EventRecord& event, int& level) {
  const std::string room = shown_room(form_.Tree);
  if (!contains_ignoring_case(event.roomdevice, room)) return;
  const bool on = event.action == "on";
  for (int slot = 0; slot < FrmMain::kSlots; ++slot) {
    const std::string& name = form_.devicename[static_cast<std::size_t>(slot)].caption;
    if (!contains_ignoring_case(event.roomdevice, name)) continue;
    if (on) {
      state_.setstatus(event.roomdevice, "on", level);
      devices_.setpictureon(slot, event.roomdevice);
    } else {
      int off_level = 0;
      state_.setstatus(event.roomdevice, "off", off_level);
      devices_.setpictureoff(slot, event.roomdevice);
    }
  }
}

bool Scheduler::is_queued(const EventRecord& event) const {
  const auto end = form_.once_removal.begin() + FrmMain::kOnceSlots;
  return std::find(form_.once_removal.begin(), end, event.once_key()) != end;
}

// With all slots in use the event stays in the list and runs again.
void Scheduler::queue_removal(const EventRecord& event) {
  const auto end = form_.once_removal.begin() + FrmMain::kOnceSlots;
  const auto slot =
      std::find_if(form_.once_removal.begin(), end, [](const auto& key) { return key.empty(); });
  if (slot != end) *slot = event.once_key();
}

}  // namespace homewarden
