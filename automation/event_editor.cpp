#include "automation/event_editor.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "core/asking.h"
#include "core/lists/choice_lists.h"
#include "core/time_text.h"
#include "platform/waiting.h"
#include "ui/busy_window.h"

namespace homewarden {
namespace {

constexpr int kFlashInterval = 1000;
constexpr std::string_view kNoLevelText = " %";
const char* const kBeginning = "New event";
const char* const kChanging = "Change event";
const char* const kNoDay =
    "No day of the week is checked, so this event will never run.\r\n\r\nDo you want to save it "
    "all "
    "the same?";
const char* const kNotSaved =
    "Sorry, the event list evelst.hwd could not be written, so your event is not saved. Please "
    "check the disk, the permissions of the file and that no other program has it open, then save "
    "again.";

std::string sun_message(const std::string& name, const std::string& lower_case_name) {
  return "You have selected " + name +
         "\r\n\r\nYou may now select an offset time\r\nusing the Minute selector.\r\n\r\n"
         "You can offset " +
         name + " by 3 hours either\r\nbefore or after actual " + lower_case_name + ".";
}

}  // namespace

EventEditor::EventEditor(EventPanel& panel, TreeView& tree, StatusBar& status, Flags& flags,
                         Window& window, Operations& operations, EventLoop& loop, Module1& module1,
                         Dialogs& dialogs, ListFile& events, EventList& list)
    : panel_(panel),
      tree_(tree),
      status_(status),
      window_(window),
      loop_(loop),
      dialogs_(dialogs),
      events_(events),
      list_(list),
      writer_(status, flags, loop, module1, events) {
  panel.Command5.click.connect([this] {
    new_event();
    panel_.editor_open = true;
    panel_.lst_eventdevice.set_focus();
  });
  panel.mnu_newevent.click.connect([this] { panel_.Command5.click(); });
  panel.Command6.click.connect([this, &operations] { operations.start(save()); });
  panel.cmd_cancel.click.connect([this] { cancel(); });
  panel.cmd_deleteevent.click.connect([this] { delete_edited(); });
  panel.lst_action.text.changed.connect([this] { show_dim_choice(); });
  panel.lst_hour.text.changed.connect([this] { offer_minutes(); });
  panel.lst_hour.click.connect([this, &operations] { operations.start(hour_chosen()); });
  panel.ListView1.double_click.connect([this] { edit_selected(); });
  panel.frm_event.visible.changed.connect([this] { begin(); });
  // What stands in the boxes is a new event for the other profile.
  list.replaced.connect([this] {
    if (edited_) end_editing();
  });
  list.renamed.connect([this](const ListFile::Edit& edit) { follow(edit); });
  list.in_use.connect([this](const EventRecord& event, bool& used) {
    used = used || edited_ == event ||
           std::any_of(savings_.begin(), savings_.end(), [&event](const Saving& saving) {
             return saving.event == event || saving.replaced == event;
           });
  });
  panel.flashsave.tick.connect([this] { panel_.Command6.bold = !panel_.Command6.bold; });
}

void EventEditor::new_event() {
  panel_.lst_action.text = "on";
  panel_.lst_dim.text = "100%";
  panel_.lst_freq.text = "daily";
  for (CheckBox& day : panel_.days) day.checked = true;
  end_editing();
  preset_time(panel_, loop_.local_time());
}

// Whoever opens the panel for the first time finds an event that would run.
void EventEditor::begin() {
  if (begun_ || !panel_.frm_event.visible) return;
  begun_ = true;
  const auto is_checked = [](const CheckBox& day) { return day.checked.get(); };
  if (std::any_of(panel_.days.begin(), panel_.days.end(), is_checked)) return;
  for (CheckBox& day : panel_.days) day.checked = true;
}

void EventEditor::cancel() {
  if (edited_) new_event();
}

// The list takes input again before it is asked to delete.
void EventEditor::delete_edited() {
  if (!edited_) return;
  const EventRecord event = *edited_;
  cancel();
  list_.select(event);
  panel_.mnu_delevent.click();
}

void EventEditor::edit_selected() {
  const auto event = list_.selected();
  if (!event || !panel_.ListView1.enabled) return;
  closed_.emplace(list_);
  tree_.enabled = false;
  panel_.flashsave.set_interval(kFlashInterval);
  panel_.Command5.bold = false;
  panel_.cmd_cancel.visible = true;
  panel_.cmd_deleteevent.visible = true;
  panel_.lab_eventtitle.caption = kChanging;
  panel_.editor_open = true;
  edited_ = event;
  ++session_;

  panel_.lst_eventdevice.text = event->device_label();
  panel_.lst_action.text = event->action;
  const TimeParts time = split_time(event->time);
  const std::string_view sun = sun_name(time.hour);
  panel_.lst_hour.text = sun.empty() ? time.hour : std::string(sun);
  panel_.lst_min.text = time.minute;
  panel_.lst_dim.text = event->dim + "%";
  panel_.lst_freq.text = event->freq;
  for (std::size_t day = 0; day < panel_.days.size(); ++day)
    panel_.days[day].checked = contains_ignoring_case(event->days, kDayLetters.substr(day, 1));
}

Task<void> EventEditor::save() {
  CheckedInput checked = check_input(input_in(panel_));
  if (auto* wrong = std::get_if<std::string>(&checked)) {
    std::string text = std::move(*wrong);
    co_await tell(dialogs_, std::move(text), "Please check", MessageIcon::kExclamation);
    co_return;
  }
  Saving saving{std::get<EventRecord>(std::move(checked)), edited_, session_};
  for (const Saving& other : savings_)
    if (other.session == saving.session && other.event == saving.event) co_return;
  savings_.push_back(std::move(saving));
  if (savings_.size() > 1) co_return;  // who saves the first one goes on with it

  struct Forget {
    std::deque<Saving>& savings;
    ~Forget() { savings.clear(); }  // also what a failure left
  } const forget{savings_};
  while (!savings_.empty()) {
    co_await save_one();
    savings_.pop_front();
  }
}

Task<void> EventEditor::save_one() {
  if (savings_.front().event.days.empty()) {
    const bool wanted =
        co_await ask(dialogs_, kNoDay, "No day chosen", Answer::kNo, MessageIcon::kExclamation);
    if (!wanted) co_return;
  }
  const Saving& saving = savings_.front();  // stays there, and follows its device
  const bool saved = co_await write(saving);
  if (saved) {
    co_await list_.loadevents();
    list_.select(saving.event);
    co_return;
  }
  status_.panel2 = "The event could not be saved";
  co_await tell_error(dialogs_, kNotSaved);
}

Task<bool> EventEditor::write(const Saving& saving) {
  const BusyWindow busy(window_);
  co_await pending_events(loop_);
  bool saved = false;
  if (saving.replaced && events_.exists())
    saved = co_await writer_.replace(*saving.replaced, saving.event);
  else
    saved = co_await writer_.add(saving.event);
  if (!saved) co_return false;
  co_await writer_.progress("New event saved at " + hh_mm(loop_.local_time()));
  has_been_saved(saving);
  co_return true;
}

// What was edited further while this one was on its way replaces this one. Another event that is
// edited by now goes on being edited.
void EventEditor::has_been_saved(const Saving& saved) {
  for (Saving& later : savings_)
    if (later.session == saved.session && later.replaced) later.replaced = saved.event;
  if (session_ == saved.session) end_editing();
}

void EventEditor::follow(const ListFile::Edit& edit) {
  const auto follow_line = [&edit](EventRecord& event) {
    const auto line = edit(event.key());
    auto renamed = line ? parse_event(*line) : std::nullopt;
    if (renamed) event = *std::move(renamed);
  };
  if (edited_) follow_line(*edited_);
  for (Saving& saving : savings_) {
    follow_line(saving.event);
    if (saving.replaced) follow_line(*saving.replaced);
  }
  const auto parts = split_label(panel_.lst_eventdevice.text.get());
  if (!parts) return;
  EventRecord chosen;
  chosen.roomdevice = parts->roomdevice;
  chosen.housecode = parts->housecode;
  chosen.unit = std::to_string(parts->unit);
  const EventRecord before = chosen;
  follow_line(chosen);
  if (chosen != before) panel_.lst_eventdevice.text = chosen.device_label();
}

Task<void> EventEditor::hour_chosen() {
  const std::string_view sun = sun_name(panel_.lst_hour.text.get());
  panel_.lst_min.text = "00";
  if (sun.empty()) co_return;
  const std::string text =
      sun == "sRise" ? sun_message("Sunrise", "sunrise") : sun_message("Sunset", "sunset");
  co_await tell(dialogs_, text, "Please read");
}

void EventEditor::show_dim_choice() {
  const bool on = panel_.lst_action.text.get() != "off";
  panel_.Label29.visible = on;
  panel_.lst_dim.visible = on;
  // An event that switches off left no level for one that switches on.
  if (on && panel_.lst_dim.text.get() == kNoLevelText) panel_.lst_dim.text = "100%";
}

// Minutes, or offsets when the hour is a sun time; the text stays when it is one of them.
void EventEditor::offer_minutes() {
  if (sun_name(panel_.lst_hour.text.get()).empty())
    fill_minutes(panel_);
  else
    fill_sun_offsets(panel_);
}

void EventEditor::end_editing() {
  ++session_;
  edited_.reset();
  closed_.reset();
  tree_.enabled = true;
  panel_.cmd_cancel.visible = false;
  panel_.cmd_deleteevent.visible = false;
  panel_.lab_eventtitle.caption = kBeginning;
  panel_.editor_open = false;
  panel_.flashsave.set_interval(0);
  panel_.Command5.bold = true;
  panel_.Command6.bold = true;
}

}  // namespace homewarden
