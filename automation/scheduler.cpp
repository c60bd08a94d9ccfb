#include "automation/scheduler.h"

#include <algorithm>
#include <utility>

#include "automation/due_time.h"
#include "automation/event_target.h"
#include "base/flag_guard.h"
#include "base/lines.h"
#include "base/text.h"
#include "core/dates.h"
#include "core/settings.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::minutes;

constexpr int kInterval = 60000;
constexpr int kLinesPerTurn = 4096;  // a few milliseconds, so that the window stays alive
constexpr int kNotesPerTurn = 64;
const std::string kCaughtUp = "caught up ";
constexpr std::chrono::hours kToldFor(12);
constexpr std::size_t kGapsTold = 3;

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

Scheduler::Scheduler(StatusBar& status, Notices& notices, ProgramTimers& timers, Flags& flags,
                     const SunTimes& sun, const Location& location, EventMemory& memory,
                     OnceEvents& once, Operations& operations, EventLoop& loop, Module1& module1,
                     ListFile& events, DeviceCommands& commands,
                     std::function<void()> close_program)
    : status_(status),
      notices_(notices),
      timers_(timers),
      flags_(flags),
      sun_(sun),
      location_(location),
      memory_(memory),
      once_(once),
      loop_(loop),
      module1_(module1),
      events_(events),
      commands_(commands),
      close_program_(std::move(close_program)),
      started_(minute_of(loop.local_time())) {
  timers.eventtimer.tick.connect([this, &operations] { operations.start(eventtimer_run()); });
  commands.tried.connect([this](const SwitchTarget& target, bool) { switched_by_others(target); });
}

Task<void> Scheduler::eventtimer_run() {
  if (minute_of(loop_.local_time()) != started_) minute_begins();
  timers_.eventtimer.set_interval(kInterval);
  while (!caught_up_.empty() && loop_.uptime() - caught_up_.front().at >= kToldFor)
    withdraw_oldest();
  const std::string installing =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "installing", "False");
  if (installing == "True") {
    close_program_();
    co_return;
  }
  const bool continues = !has_begun_ && begin();
  const Minute now = minute_of(loop_.local_time());
  if (checked_.back().last == now) co_return;
  const Run run{++last_run_, now, missed_before(checked_, now), checked_, continues};
  checked_ = with_checked(std::move(checked_), now);
  runs_.push_back({run.number, checked_});
  try {
    const bool was_read = co_await look_at(run);
    if (!was_read && run.number == last_run_) checked_ = run.checked_before;
    finish(run, was_read);
  } catch (...) {
    finish(run, true);
    throw;
  }
}

// False at the very first start: nothing was missed before the program ran. False as well until it
// is known what the disk holds.
bool Scheduler::begin() {
  if (checked_.empty()) checked_.push_back({started_, started_});
  has_begun_ = module1_.is_known(RegistryRoot::kLocalMachine);
  if (!has_begun_) return false;
  memory_.load();
  once_.restore();
  const bool continues = !memory_.checked().empty();
  if (continues) checked_ = memory_.checked();
  for (Unfinished& run : runs_) run.checked = checked_;
  memory_.set_checked(checked_);
  return continues;
}

// A minute counts on the disk when all events of it and of those before have had their turn.
void Scheduler::finish(const Run& run, bool was_read) {
  const auto done = std::find_if(runs_.begin(), runs_.end(), [&run](const Unfinished& unfinished) {
    return unfinished.run == run.number;
  });
  if (done == runs_.end()) return;
  if (was_read && done == runs_.begin())
    memory_.set_checked(std::move(done->checked));
  else if (was_read)
    std::prev(done)->checked = std::move(done->checked);
  runs_.erase(done);
}

// False when there is a list that cannot be read.
Task<bool> Scheduler::look_at(Run run) {
  // A profile that is being changed to may bring a list.
  if (!events_.exists() && !flags_.filebusy) co_return no_events();
  const FilesInUse files = co_await take_files();
  if (!events_.exists()) co_return no_events();
  status_.panel2 = "Timer, Loading rooms list";
  const auto content = events_.content();
  if (!content) {
    status_.panel2 = "Timer, the event list evelst.hwd cannot be read";
    co_return false;
  }
  const MinuteSpan this_minute{run.now, run.now};
  auto due = co_await due_events(*content, this_minute, sun_);
  std::string caught_up;
  if (run.missed)
    caught_up = co_await catch_up(run, *content, due);
  else if (is_long_ago(run.checked_before, run.now))
    caught_up = "The clock went on by more than a month, whose events are left out";
  co_await run_due(std::move(due), run);
  if (!caught_up.empty()) tell_caught_up(std::move(caught_up), run);
  co_return true;
}

// The next message takes the status line at once, and whoever comes back later wants to know, too:
// also of the gap before this one.
void Scheduler::tell_caught_up(std::string text, const Run& run) {
  if (caught_up_.size() == kGapsTold) withdraw_oldest();
  caught_up_.push_back({kCaughtUp + std::to_string(run.number), loop_.uptime()});
  notices_.tell(caught_up_.back().subject, text + ".");
  status_.panel2 = std::move(text);
}

void Scheduler::withdraw_oldest() {
  notices_.withdraw(caught_up_.front().subject);
  caught_up_.pop_front();
}

bool Scheduler::no_events() {
  status_.panel2 = "Timer running, no events to run.";
  return true;
}

Task<Scheduler::FilesInUse> Scheduler::take_files() {
  const Turn turn(waiting_);
  while (!turn.is_next() || (flags_.filebusy && passes_ == 0)) co_await module1_.pause(2);
  co_return FilesInUse(*this);
}

// The events that are due within the span, which lies on one day, by the order of the list. A
// once-event that has run and could not be removed yet is none.
Task<std::vector<DueEvent>> Scheduler::due_events(std::string_view lines, MinuteSpan span,
                                                  SunTimes sun) {
  std::vector<DueEvent> found;
  const auto today = floor<days>(span.first);
  LineReader reader(lines);
  for (int number = 1;; ++number) {
    const auto line = reader.next();
    if (!line) co_return found;
    if (number % kLinesPerTurn == 0) co_await pending_events(loop_);
    const auto fields = split_event(*line);
    if (!fields) continue;
    const auto due = due_minute((*fields)[4], sun.sunrise_time, sun.sunset_time);
    if (!due || today + minutes(*due) < span.first || today + minutes(*due) > span.last) continue;
    EventRecord event = event_of(*fields);
    if (event.freq == "once" && once_.is_queued(event)) continue;
    found.push_back({std::move(event), today + minutes(*due)});
  }
}

// Of a longer gap only the last day can still do something. The text that tells of it.
Task<std::string> Scheduler::catch_up(Run run, std::string_view lines,
                                      const std::vector<DueEvent>& next) {
  const MinuteSpan gap{std::max(run.missed->first, run.now - kLatestOff), run.missed->last};
  std::vector<DueEvent> missed;
  for (auto day = floor<days>(gap.first); day <= floor<days>(gap.last); day += days(1)) {
    const MinuteSpan part{std::max<Minute>(gap.first, day),
                          std::min<Minute>(gap.last, day + days(1) - minutes(1))};
    const SunTimes sun = location_.sun_times(day);
    auto found = co_await due_events(lines, part, sun);
    std::move(found.begin(), found.end(), std::back_inserter(missed));
  }
  std::stable_sort(missed.begin(), missed.end(),
                   [](const DueEvent& a, const DueEvent& b) { return a.due < b.due; });
  for (const DueEvent& due : missed)
    if (due.event.freq == "once" && had_turn(due)) once_.queue(due.event);
  CatchUp plan = plan_catch_up(std::move(missed), next, run.now,
                               [this](const DueEvent& due) { return had_turn(due); });
  int notes = 0;
  for (const DueEvent& due : plan.gave_way) {
    note_turn(due);
    if (++notes % kNotesPerTurn == 0) co_await pending_events(loop_);
  }
  for (const auto* left_out : {&plan.gave_way, &plan.too_late, &plan.no_longer})
    for (const DueEvent& due : *left_out)
      if (due.event.freq == "once") once_.queue(due.event);
  co_await run_missed(run, plan);
  co_return text_of(plan, *run.missed, run.now,
                    run.continues ? "in which the program did not run" : "which the clock skipped");
}

// A device that a later event, or somebody else, has switched meanwhile keeps what that set.
Task<void> Scheduler::run_missed(Run run, CatchUp& plan) {
  std::vector<DueEvent> done;
  for (DueEvent& due : plan.to_run) {
    say_found(due);
    LineTurn turn = co_await commands_.take_line(Source::kEvent);
    std::vector<DueEvent>* became = &plan.gave_way;
    if (run_of_device_[address_of(due.event)] > run.number) {
      turn.release();
      note_turn(due);
    } else {
      const bool sent = co_await switch_device(std::move(turn), due, run.number);
      became = sent ? &done : &plan.not_sent;
    }
    if (due.event.freq == "once") once_.queue(due.event);
    became->push_back(std::move(due));
  }
  plan.to_run = std::move(done);
}

Task<void> Scheduler::run_due(std::vector<DueEvent> events, Run run) {
  std::vector<bool> again;  // as it was before: two equal lines both run
  for (const DueEvent& due : events) again.push_back(had_turn(due));
  std::vector<DueEvent> left_out;
  for (std::size_t i = 0; i < events.size(); ++i) {
    const DueEvent& due = events[i];
    say_found(due);
    if (again[i]) {
      left_out.push_back(due);
    } else if (runs_on_day(due)) {
      LineTurn turn = co_await commands_.take_line(Source::kEvent);
      co_await switch_device(std::move(turn), due, run.number);
    }
    if (due.event.freq == "once") once_.queue(due.event);
  }
  if (left_out.empty()) co_return;
  status_.panel2 = "Timer, " + names_of(left_out, run.now) +
                   (left_out.size() == 1 ? " has had its turn on this day and does not run again"
                                         : " have had their turn on this day and do not run again");
}

void Scheduler::say_found(const DueEvent& due) {
  const std::string time = hh_mm(due.due);
  status_.panel2 = "Timer, found match with " + time + " and " + time;
}

Task<bool> Scheduler::switch_device(LineTurn turn, DueEvent due, long run) {
  SwitchTarget target = target_of(due.event);
  DeviceOrder order{due.event.action == "on"};
  if (order.on) order.level = event_level(due.event).value_or(0);
  long& last_run = run_of_device_[address_of(due.event)];
  last_run = std::max(last_run, run);
  bool sent = false;
  {
    const FlagGuard switching(switching_);
    sent = co_await commands_.send_and_record(std::move(turn), target, order, Source::kEvent);
  }
  note_turn(due);
  co_await commands_.finish(std::move(target), order);
  co_return sent;
}

void Scheduler::switched_by_others(const SwitchTarget& target) {
  const Device device{"", "", target.house_code, target.unit};
  if (switching_ || !device.has_address()) return;
  run_of_device_[to_lower(target.house_code) + std::to_string(target.unit)] = last_run_ + 1;
}

bool Scheduler::had_turn(const DueEvent& due) const {
  return memory_.had_turn(due.event.key(), due.due);
}

void Scheduler::note_turn(const DueEvent& due) {
  memory_.note_turn(due.event.key(), due.due);
}

}  // namespace homewarden
