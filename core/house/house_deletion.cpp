#include "core/house/house_deletion.h"

#include <optional>
#include <utility>

#include "automation/event_record.h"
#include "base/lines.h"
#include "base/text.h"
#include "core/devices.h"
#include "core/lists/choice_lists.h"
#include "core/lists/file_lock.h"
#include "core/time_text.h"
#include "platform/waiting.h"
#include "ui/busy_window.h"
#include "ui/fixed_nodes.h"
#include "ui/key_codes.h"

namespace homewarden {
namespace {

std::string_view first_field(std::string_view line) {
  return line.substr(0, line.find('~'));
}

ListFile::Choice lines_of_room(std::string room) {
  return [room = std::move(room)](std::string_view line) {
    return !line.empty() && equals_ignoring_case(first_field(line), room);
  };
}

ListFile::Choice lines_of_device(std::string room, std::string device) {
  return [room = std::move(room), device = std::move(device)](std::string_view line) {
    if (!equals_ignoring_case(first_field(line), room)) return false;
    const auto entry = parse_list_line(line);
    return entry && entry->device && equals_ignoring_case(entry->device->name, device);
  };
}

ListFile::Choice events_of(std::string roomdevice) {
  return [roomdevice = std::move(roomdevice)](std::string_view line) {
    return equals_ignoring_case(first_field(line), roomdevice);
  };
}

std::size_t count(ListFile& list, const ListFile::Choice& choice) {
  const auto content = list.content();
  LineReader reader(content ? *content : std::string_view());
  std::size_t found = 0;
  while (const auto line = reader.next())
    if (choice(*line)) ++found;
  return found;
}

}  // namespace

HouseDeletion::HouseDeletion(FrmMain& form, Operations& operations, EventLoop& loop,
                             Module1& module1, Settings& settings, Dialogs& dialogs,
                             HouseFiles& files, RoomList& rooms, EventList& events,
                             DeviceState& state, NavigationTree& tree)
    : form_(form),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      dialogs_(dialogs),
      files_(files),
      rooms_(rooms),
      events_(events),
      state_(state),
      tree_(tree) {
  form.Tree.key_press.connect([this, &operations](int key) { operations.start(deletetree(key)); });
  form.mnu_deletetree.click.connect(
      [this, &operations] { operations.start(deletetree(kControlD)); });
}

Task<void> HouseDeletion::deletetree(int KeyCode) {
  if (KeyCode == kBackSpace) {
    Message message{"If you wish to delete the item, press the Back Space key",
                    "What did you want to do?", MessageIcon::kInformation, MessageButtons::kOk};
    co_await dialogs_.message_box(std::move(message));
    co_return;
  }
  const TreeNode* node = form_.Tree.selected;
  if ((KeyCode != kControlD && KeyCode != kDelete) || !node) co_return;
  // The node may go while the questions are asked.
  std::string name = node->text;
  if (!node->parent) {
    co_await delete_top_item(std::move(name));
    co_return;
  }
  std::string room = node->parent->text;
  co_await delete_device(std::move(room), std::move(name));
}

Task<void> HouseDeletion::delete_top_item(std::string name) {
  if (name == kHome) {
    rooms_.gohome();
  } else if (name == kEvents) {
    form_.show_only(form_.frm_event);
    preset_time(form_, loop_.local_time());
  } else {
    co_await delete_room(std::move(name));
  }
}

Task<void> HouseDeletion::delete_room(std::string room) {
  const bool wanted = co_await ask(
      "Are you sure you want to delete this device? Please be aware that this will also DELETE any "
      "devices you have setup in this room!",
      "Really Delete?");
  if (!wanted || !files_.rooms.exists()) co_return;
  say("PLEASE WAIT! Searching for " + room + ", for deletion");
  co_await pending_events(loop_);
  const BusyWindow busy(form_);
  const EventList::Closed closed(events_);
  co_await pending_events(loop_);
  Lines lines;
  const bool deleted = co_await rewrite_for_room(room, lines);
  co_await finish(deleted, lines);
}

Task<bool> HouseDeletion::rewrite_for_room(std::string room, Lines& lines) {
  const FileLock lock = co_await lock_files(form_, module1_);
  files_.discard_deletion();
  co_await module1_.pause(1);
  const ListFile::Choice choice = lines_of_room(room);
  lines = lines_of(choice);
  for (std::size_t line = 0; line < lines.found; ++line) {
    say("FOUND " + room + ", deleting now");
    co_await pending_events(loop_);
  }
  if (!files_.decide_deletion(choice, {})) co_return false;
  say(room + " has been deleted, please wait.");
  co_await pending_events(loop_);
  co_await module1_.pause(1);
  const bool deleted = carry_out(lines);
  co_await module1_.pause(2);
  co_await module1_.pause(1);
  co_return deleted;
}

Task<void> HouseDeletion::delete_device(std::string room, std::string device) {
  const bool wanted =
      co_await ask("Are you sure you want to delete this device?", "Really Delete?");
  if (!wanted) co_return;
  const bool with_events = co_await ask(
      "Do you want to remove any events you may have set for this device?", "Remove Events?");
  if (!files_.rooms.exists()) co_return;
  const EventList::Closed closed(events_);
  say("PLEASE WAIT! Searching for " + room + ", " + device + " for deletion");
  co_await pending_events(loop_);
  Lines lines;
  const bool deleted = co_await rewrite_for_device(room, device, with_events, lines);
  co_await finish(deleted, lines);
}

Task<bool> HouseDeletion::rewrite_for_device(std::string room, std::string device, bool with_events,
                                             Lines& lines) {
  const FileLock lock = co_await lock_files(form_, module1_);
  files_.discard_deletion();
  co_await module1_.pause(1);
  co_await module1_.pause(1);

  const ListFile::Choice choice = lines_of_device(room, device);
  lines = lines_of(choice);
  const bool cleans_events = with_events && lines.found > 0 && files_.events.exists();
  const ListFile::Choice event_choice =
      cleans_events ? events_of(roomdevice_of(room, device)) : ListFile::Choice();
  std::size_t events = cleans_events ? count(files_.events, event_choice) : 0;
  const bool decided = files_.decide_deletion(choice, event_choice);
  bool done = decided;

  for (std::size_t line = 0; line < lines.found; ++line) {
    say("FOUND! " + room + ", " + device + ". Deleting now.");
    co_await pending_events(loop_);
    if (!cleans_events) continue;
    if (done && line == 0) done = files_.use_events();
    co_await remove_events(room, device, std::exchange(events, 0));
  }
  co_await module1_.pause(2);
  if (done)
    done = carry_out(lines);
  else if (decided)
    files_.give_up_deletion();
  co_await module1_.pause(2);
  co_return done;
}

bool HouseDeletion::carry_out(const Lines& lines) {
  if (files_.use_rooms()) {
    forget(lines);
    return true;
  }
  files_.give_up_deletion();
  return false;
}

// Tells what happens to the events; their new list is in place.
Task<void> HouseDeletion::remove_events(std::string room, std::string device, std::size_t found) {
  for (std::size_t event = 0; event < found; ++event) {
    say("Found an event for " + room + ", " + device + ". Deleting now.");
    co_await pending_events(loop_);
  }
  form_.Statusbar.panel2 = "Device Removed, cleaning up now.";
  co_await module1_.pause(2);
  co_await module1_.pause(2);
  form_.Statusbar.panel2 = "Nearly finished.";
}

Task<bool> HouseDeletion::ask(const char* text, const char* title) {
  Message question{text, title, MessageIcon::kQuestion, MessageButtons::kYesNo};
  const Answer answer = co_await dialogs_.message_box(std::move(question));
  co_return answer == Answer::kYes;
}

HouseDeletion::Lines HouseDeletion::lines_of(const ListFile::Choice& choice) {
  Lines lines;
  const auto content = files_.rooms.content();
  LineReader reader(content ? *content : std::string_view());
  while (const auto line = reader.next()) {
    if (!choice(*line)) continue;
    ++lines.found;
    const auto entry = parse_list_line(*line);
    if (entry && entry->device) lines.keys.insert(to_lower(entry->device->key()));
  }
  return lines;
}

// Two devices can share a key; what is stored under it stays with the one that stays.
void HouseDeletion::forget(const Lines& lines) {
  const Lines staying = lines_of([](std::string_view) { return true; });
  for (const std::string& key : lines.keys) {
    if (staying.keys.contains(key)) continue;
    settings_.remove("type", key);
    state_.forget(key);
  }
}

Task<void> HouseDeletion::finish(bool deleted, const Lines& lines) {
  say("Clearing old data ready for re load");
  co_await pending_events(loop_);
  rooms_.cleartree(form_.Tree);
  co_await module1_.pause(1);
  co_await rooms_.loadlists();
  if (deleted) forget(lines);  // a wall switch may have been pressed while it was still known
  co_await events_.loadevents();
  co_await module1_.pause(1);
  say(deleted ? "Your item was deleted at " + hh_mm(loop_.local_time())
              : "Your item could not be deleted");
  co_await pending_events(loop_);
  rooms_.cleartree(form_.Tree);  // another change may have filled it meanwhile
  tree_.loadtree();
  rooms_.gohome();
  if (deleted) co_return;
  Message message{
      "Sorry, the files of the house could not be written, so your item is still there. Please "
      "check the disk and the permissions of rmlst.hwd and evelst.hwd.",
      "Error", MessageIcon::kCritical, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

void HouseDeletion::say(std::string text) {
  form_.Statusbar.panel2 = std::move(text);
}

}  // namespace homewarden
