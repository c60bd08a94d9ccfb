#include "automation/event_editor.h"

#include <string_view>
#include <utility>

#include "base/text.h"
#include "core/lists/choice_lists.h"
#include "core/lists/file_lock.h"
#include "core/time_text.h"
#include "platform/waiting.h"
#include "ui/busy_window.h"

namespace homewarden {
namespace {

constexpr int kFlashInterval = 1000;
constexpr std::string_view kNoLevelText = " %";

std::string sun_message(const std::string& name, const std::string& lower_case_name) {
  return "You have selected " + name +
         "\r\n\r\nYou may now select an offset time\r\nusing the Minute selector.\r\n\r\n"
         "You can offset " +
         name + " by 3 hours either\r\nbefore or after actual " + lower_case_name + ".";
}

}  // namespace

EventEditor::EventEditor(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
                         Dialogs& dialogs, ListFile& events, EventList& list)
    : form_(form), loop_(loop), module1_(module1), dialogs_(dialogs), events_(events), list_(list) {
  form.Command5.click.connect([this] { new_event(); });
  form.mnu_newevent.click.connect([this] { form_.Command5.click(); });
  form.Command6.click.connect([this, &operations] { operations.start(save()); });
  form.lst_action.text.changed.connect([this] { show_dim_choice(); });
  form.lst_hour.text.changed.connect([this] { offer_minutes(); });
  form.lst_hour.click.connect([this, &operations] { operations.start(hour_chosen()); });
  form.ListView1.double_click.connect([this] { edit_selected(); });
  form.flashsave.tick.connect([this] { form_.Command6.bold = !form_.Command6.bold; });
}

void EventEditor::new_event() {
  form_.lst_action.text = "on";
  form_.lst_dim.text = "100%";
  form_.lst_freq.text = "daily";
  for (CheckBox& day : form_.days) day.checked = true;
  end_editing();
  preset_time(form_, loop_.local_time());
}

void EventEditor::edit_selected() {
  const auto event = list_.selected();
  if (!event || !form_.ListView1.enabled) return;
  form_.ListView1.enabled = false;
  form_.Tree.enabled = false;
  form_.flashsave.set_interval(kFlashInterval);
  form_.Command5.bold = false;
  edited_ = event;

  form_.lst_eventdevice.text = event->device_label();
  form_.lst_action.text = event->action;
  const std::string& time = event->time;
  const auto characters = [&time](std::size_t first) {
    return first < time.size() ? time.substr(first, 2) : std::string();
  };
  if (contains_ignoring_case(time, "sRise")) {
    form_.lst_hour.text = "sRise";
    form_.lst_min.text = characters(6);
  } else if (contains_ignoring_case(time, "sSet")) {
    form_.lst_hour.text = "sSet";
    form_.lst_min.text = characters(5);
  } else {
    form_.lst_hour.text = characters(0);
    form_.lst_min.text = characters(3);
  }
  form_.lst_dim.text = event->dim + "%";
  form_.lst_freq.text = event->freq;
  for (std::size_t day = 0; day < form_.days.size(); ++day)
    form_.days[day].checked = contains_ignoring_case(event->days, kDayLetters.substr(day, 1));
}

Task<void> EventEditor::save() {
  const CheckedInput checked = check_input(input(), form_.lst_eventdevice.items, edited_);
  if (const auto* wrong = std::get_if<std::string>(&checked)) {
    Message message{*wrong, "Please check", MessageIcon::kExclamation, MessageButtons::kOk};
    co_await dialogs_.message_box(std::move(message));
    co_return;
  }
  const EventRecord event = std::get<EventRecord>(checked);

  bool saved = false;
  {
    const BusyWindow busy(form_);
    co_await pending_events(loop_);
    if (edited_ && events_.exists())
      saved = co_await replace_edited(event);
    else
      saved = co_await add(event);
    if (saved) {
      const std::string text = "New event saved at " + hh_mm(loop_.local_time());
      co_await progress(text.c_str());
      end_editing();
    }
  }
  if (saved) {
    co_await list_.loadevents();
    list_.select(event);
    co_return;
  }
  form_.Statusbar.panel2 = "The event could not be saved";
  Message message{
      "Sorry, the event list evelst.hwd could not be written, so your event is not saved. Please "
      "check the disk and the permissions of the file, then save again.",
      "Error", MessageIcon::kCritical, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

// The old line goes and the new one comes in one step, so that a stop in between loses neither.
Task<bool> EventEditor::replace_edited(const EventRecord& event) {
  {
    const FileLock lock = co_await lock_files(form_, module1_);
    co_await progress("Please wait, preparing to edit your event");
    events_.remove_scratch();
    const auto content = events_.content();
    if (!content) co_return false;
    const auto old_lines = lines_of_event(*content, edited_->key());
    if (!events_.write_scratch(old_lines, event.key())) co_return false;
    co_await progress("Old event deleted, now cleaning up");
    co_await module1_.pause(1);
    if (!events_.use_scratch()) co_return false;
    co_await module1_.pause(1);
  }
  const FileLock lock = co_await lock_files(form_, module1_);
  co_await progress("Please wait, saving your new event now");
  co_return true;
}

Task<bool> EventEditor::add(const EventRecord& event) {
  const FileLock lock = co_await lock_files(form_, module1_);
  co_await progress("Please wait, saving your new event now");
  co_return events_.add(event.key());
}

Task<void> EventEditor::progress(const char* text) {
  form_.Statusbar.panel2 = text;
  co_await pending_events(loop_);
}

Task<void> EventEditor::hour_chosen() {
  const std::string_view sun = sun_name(form_.lst_hour.text.get());
  form_.lst_min.text = "00";
  if (sun.empty()) co_return;
  const std::string text =
      sun == "sRise" ? sun_message("Sunrise", "sunrise") : sun_message("Sunset", "sunset");
  Message message{text, "Please read", MessageIcon::kInformation, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

void EventEditor::show_dim_choice() {
  const bool on = form_.lst_action.text.get() != "off";
  form_.Label29.visible = on;
  form_.lst_dim.visible = on;
  // An event that switches off left no level for one that switches on.
  if (on && form_.lst_dim.text.get() == kNoLevelText) form_.lst_dim.text = "100%";
}

// Minutes, or offsets when the hour is a sun time; the text stays when it is one of them.
void EventEditor::offer_minutes() {
  if (sun_name(form_.lst_hour.text.get()).empty())
    fill_minutes(form_);
  else
    fill_sun_offsets(form_);
}

void EventEditor::end_editing() {
  edited_.reset();
  form_.ListView1.enabled = true;
  form_.Tree.enabled = true;
  form_.flashsave.set_interval(0);
  form_.Command5.bold = true;
  form_.Command6.bold = true;
}

EventInput EventEditor::input() const {
  EventInput input{form_.lst_eventdevice.text,
                   form_.lst_action.text,
                   form_.lst_dim.text,
                   form_.lst_hour.text,
                   form_.lst_min.text,
                   form_.lst_freq.text,
                   {}};
  for (std::size_t day = 0; day < input.days.size(); ++day)
    input.days[day] = form_.days[day].checked;
  return input;
}

}  // namespace homewarden
