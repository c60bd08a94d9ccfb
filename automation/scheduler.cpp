#include "automation/scheduler.h"

#include <algorithm>
#include <utility>

#include "automation/due_time.h"
#include "automation/event_target.h"
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
    if (scheduler.passes_++ == 0) scheduler.flags_.filebusy = true;
  }
  FilesInUse(FilesInUse&& other) noexcept : scheduler_(std::exchange(other.scheduler_, nullptr)) {}
  FilesInUse(const FilesInUse&) = delete;
  FilesInUse& operator=(const FilesInUse&) = delete;
  FilesInUse& operator=(FilesInUse&&) = delete;
  ~FilesInUse() {
    if (scheduler_ && --scheduler_->passes_ == 0) scheduler_->flags_.filebusy = false;
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

Scheduler::Scheduler(StatusBar& status, ProgramTimers& timers, Flags& flags, const SunTimes& sun,
                     OnceRemoval& once, Operations& operations, EventLoop& loop, Module1& module1,
                     ListFile& events, DeviceCommands& commands,
                     std::function<void()> close_program)
    : status_(status),
      timers_(timers),
      flags_(flags),
      sun_(sun),
      once_(once),
      loop_(loop),
      module1_(module1),
      events_(events),
      commands_(commands),
      close_program_(std::move(close_program)) {
  timers.eventtimer.tick.connect([this, &operations] { operations.start(eventtimer_run()); });
}

Task<void> Scheduler::eventtimer_run() {
  timers_.eventtimer.set_interval(kInterval);
  const std::string installing =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "installing", "False");
  if (installing == "True") {
    close_program_();
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
  if (minutes.size() > 1) status_.panel2 = caught_up_text(minutes, carried_out);
}

// The number of events that were carried out.
Task<int> Scheduler::pass(MinuteCheck check) {
  // A profile that is being changed to may bring a list.
  if (!events_.exists() && !flags_.filebusy) co_return no_events();
  const FilesInUse files = co_await take_files();
  if (!events_.exists()) co_return no_events();
  status_.panel2 = "Timer, Loading rooms list";
  const auto content = events_.content();
  if (!content) {
    status_.panel2 = "Timer, the event list evelst.hwd cannot be read";
    co_return 0;
  }
  co_return co_await look_for_events(check, *content);
}

int Scheduler::no_events() {
  status_.panel2 = "Timer running, no events to run.";
  return 0;
}

Task<Scheduler::FilesInUse> Scheduler::take_files() {
  const Turn turn(waiting_);
  while (!turn.is_next() || (flags_.filebusy && passes_ == 0)) co_await module1_.pause(2);
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
    const auto due = due_minute((*fields)[4], sun_.sunrise_time, sun_.sunset_time);
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
  status_.panel2 = "Timer, found match with " + hh_mm(due) + " and " + hh_mm(minute);
  if (!contains_ignoring_case(event.days, std::string(1, weekday_letter(minute)))) co_return false;
  if (!why_never_run(event).empty()) co_return false;

  SwitchTarget target = target_of(event);
  if (event.action == "on")
    co_await commands_.turnon(std::move(target), event_level(event).value_or(0), Source::kEvent);
  else
    co_await commands_.turnoff(std::move(target), Source::kEvent);
  co_return true;
}

bool Scheduler::is_queued(const EventRecord& event) const {
  const auto end = once_.once_removal.begin() + OnceRemoval::kOnceSlots;
  return std::find(once_.once_removal.begin(), end, event.once_key()) != end;
}

// With all slots in use the event stays in the list and runs again.
void Scheduler::queue_removal(const EventRecord& event) {
  const auto end = once_.once_removal.begin() + OnceRemoval::kOnceSlots;
  const auto slot =
      std::find_if(once_.once_removal.begin(), end, [](const auto& key) { return key.empty(); });
  if (slot != end) *slot = event.once_key();
}

}  // namespace homewarden
