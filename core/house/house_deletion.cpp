#include "core/house/house_deletion.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/lines.h"
#include "core/asking.h"
#include "core/device_ids.h"
#include "core/lists/file_lock.h"
#include "core/time_text.h"
#include "platform/waiting.h"
#include "ui/busy_window.h"
#include "ui/fixed_nodes.h"
#include "ui/key_codes.h"

namespace homewarden {
namespace {

bool deletes(int key) {
  return key == kControlD || key == kDelete || key == kBackSpace;
}

std::size_t count(ListFile& list, const ListFile::Choice& choice) {
  const auto content = list.content();
  LineReader reader(content ? *content : std::string_view());
  std::size_t found = 0;
  while (const auto line = reader.next())
    if (choice(*line)) ++found;
  return found;
}

// The choices of a deletion; good as long as it is kept.
ListFile::Choice rooms_of(const HouseRemoval& removal) {
  return [&removal](std::string_view line) { return removal.takes_room_line(line); };
}
ListFile::Choice events_of(const HouseRemoval& removal) {
  return [&removal](std::string_view line) { return removal.takes_event(line); };
}
ListFile::Choice macros_of(const HouseRemoval& removal) {
  return [&removal](std::string_view line) { return removal.takes_macro(line); };
}

// A fixed node that stands for its panel and not, by an accident of names, for a room.
bool is_panel(const TreeNode& node, const HouseIndex& house) {
  if (node.parent ||
      std::find(std::begin(kFixedNodes), std::end(kFixedNodes), node.text) == std::end(kFixedNodes))
    return false;
  const auto& rooms = house.rooms();
  const bool is_room = std::find(rooms.begin(), rooms.end(), node.text) != rooms.end();
  return !is_room || node.text == kHome || node.text == kEvents;
}

}  // namespace

HouseDeletion::HouseDeletion(Window& window, NavigationPane& pane, HousePanel& room_panel,
                             Flags& flags, StatusBar& status, Operations& operations,
                             EventLoop& loop, Module1& module1, Settings& settings,
                             Dialogs& dialogs, HouseFiles& files, HouseIndex& house,
                             RoomList& rooms, EventList& events, DeviceState& state,
                             NavigationTree& tree, DeletionUndo& undo)
    : window_(window),
      pane_(pane),
      room_panel_(room_panel),
      flags_(flags),
      status_(status),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      dialogs_(dialogs),
      files_(files),
      house_(house),
      rooms_(rooms),
      events_(events),
      state_(state),
      tree_(tree),
      undo_(undo) {
  pane.Tree.key_press.connect([this, &operations](int key) { operations.start(deletetree(key)); });
  pane.mnu_deletetree.click.connect(
      [this, &operations] { operations.start(deletetree(kControlD)); });
}

Task<void> HouseDeletion::deletetree(int KeyCode) {
  const TreeNode* node = pane_.Tree.selected;
  if (!node) co_return;
  if (!deletes(KeyCode)) {
    std::string hint = "If you wish to delete the item, press the Back Space key";
    std::string title = "What did you want to do?";
    co_await tell(dialogs_, std::move(hint), std::move(title));
    co_return;
  }
  if (is_panel(*node, house_)) {
    pane_.Tree.click();
    co_return;
  }
  // The node may go while the questions are asked.
  Item item{node->text, "", ""};
  if (node->parent) {
    const Device* device = tree_.device_of(*node);
    item = {node->parent->text, node->text, device ? device->tree_key() : node->key};
  }
  co_await delete_item(std::move(item));
}

Task<void> HouseDeletion::delete_item(Item item) {
  const auto wishes = co_await ask_wishes(item);
  if (!wishes || !files_.rooms.exists()) co_return;
  if (item.is_room())
    co_await delete_room(std::move(item), *wishes);
  else
    co_await delete_device(std::move(item), *wishes);
}

Task<std::optional<HouseDeletion::Wishes>> HouseDeletion::ask_wishes(Item item) {
  const HouseRemoval removal(item, files_.rooms.content().value_or(""));
  const bool is_room = item.is_room();
  std::string text = "Are you sure you want to delete this device?";
  if (is_room)
    text += " Please be aware that this will also DELETE any devices you have setup in this room!";
  std::string title = "Really Delete?";
  const bool wanted = co_await ask_about(std::move(text), std::move(title), removal.description());
  if (!wanted) co_return std::nullopt;

  Wishes wishes;
  if (!is_room || count(files_.events, events_of(removal)) > 0) {
    text = is_room ? "Do you want to remove the events of the devices of this room?"
                   : "Do you want to remove any events you may have set for this device?";
    title = "Remove Events?";
    wishes.events = co_await ask_about(std::move(text), std::move(title), removal.description());
  }
  if (count(files_.macros, macros_of(removal)) > 0) {
    text = is_room ? "Do you want to remove the macros that use the devices of this room?"
                   : "Do you want to remove the macros that use this device?";
    title = "Remove Macros?";
    wishes.macros = co_await ask_about(std::move(text), std::move(title), removal.description());
  }
  co_return wishes;
}

Task<bool> HouseDeletion::ask_about(std::string text, std::string title, std::string description) {
  text += "\r\n\r\n" + description;
  const bool yes = co_await ask(dialogs_, std::move(text), std::move(title), Answer::kNo);
  co_return yes;
}

Task<void> HouseDeletion::delete_room(Item item, Wishes wishes) {
  RoomList::View seen_from = rooms_.view();
  say("PLEASE WAIT! Searching for " + item.room + ", for deletion");
  co_await pending_events(loop_);
  const BusyWindow busy(window_);
  const EventList::Closed closed(events_);
  co_await pending_events(loop_);
  Result result = co_await rewrite_for_room(item, wishes);
  co_await finish(std::move(result), std::move(seen_from), std::move(item));
}

Task<void> HouseDeletion::delete_device(Item item, Wishes wishes) {
  RoomList::View seen_from = rooms_.view();
  const EventList::Closed closed(events_);
  say("PLEASE WAIT! Searching for " + item.name() + " for deletion");
  co_await pending_events(loop_);
  Result result = co_await rewrite_for_device(item, wishes);
  co_await finish(std::move(result), std::move(seen_from), std::move(item));
}

Task<HouseDeletion::Result> HouseDeletion::rewrite_for_room(Item item, Wishes wishes) {
  const FileLock lock = co_await lock_files(flags_, module1_);
  files_.give_up_deletion();
  co_await module1_.pause(1);
  const HouseRemoval removal(item, files_.rooms.content().value_or(""));
  for (std::size_t line = 0; line < removal.lines(); ++line) {
    say("FOUND " + item.room + ", deleting now");
    co_await pending_events(loop_);
  }
  const std::size_t events = wishes.events ? count(files_.events, events_of(removal)) : 0;
  const std::size_t macros = wishes.macros ? count(files_.macros, macros_of(removal)) : 0;
  DeletedItem deleted = remember(item, removal, wishes);
  Result result{decide(removal, wishes), removal.keys(), std::move(deleted)};
  if (result.outcome != Outcome::kDeleted) co_return result;
  co_await tell_found("a macro", item.name(), macros);
  co_await tell_found("an event", item.name(), events);
  say(item.room + " has been deleted, please wait.");
  co_await pending_events(loop_);
  co_await module1_.pause(1);
  result.outcome = carry_out(removal, result.deleted);
  co_await module1_.pause(2);
  co_await module1_.pause(1);
  co_return result;
}

Task<HouseDeletion::Result> HouseDeletion::rewrite_for_device(Item item, Wishes wishes) {
  const FileLock lock = co_await lock_files(flags_, module1_);
  files_.give_up_deletion();
  co_await module1_.pause(1);
  co_await module1_.pause(1);

  const HouseRemoval removal(item, files_.rooms.content().value_or(""));
  const bool cleans_events = wishes.events && files_.events.exists();
  std::size_t events = cleans_events ? count(files_.events, events_of(removal)) : 0;
  const std::size_t macros = wishes.macros ? count(files_.macros, macros_of(removal)) : 0;
  DeletedItem deleted = remember(item, removal, wishes);
  Result result{decide(removal, wishes), removal.keys(), std::move(deleted)};
  if (result.outcome != Outcome::kDeleted) co_return result;
  co_await tell_found("a macro", item.name(), macros);
  for (std::size_t line = 0; line < removal.lines(); ++line) {
    say("FOUND! " + item.name() + ". Deleting now.");
    co_await pending_events(loop_);
    if (!cleans_events) continue;
    co_await tell_found("an event", item.name(), std::exchange(events, 0));
    say("Device Removed, cleaning up now.");
    co_await module1_.pause(2);
    co_await module1_.pause(2);
    say("Nearly finished.");
  }
  co_await module1_.pause(2);
  result.outcome = carry_out(removal, result.deleted);
  co_await module1_.pause(2);
  co_return result;
}

// kDeleted when the deletion is decided and its macros are gone.
HouseDeletion::Outcome HouseDeletion::decide(const HouseRemoval& removal, Wishes wishes) {
  if (!files_.rooms.content()) return Outcome::kFailed;
  if (removal.lines() == 0) return Outcome::kNotThere;
  HouseFiles::Deletion deletion{rooms_of(removal), {}, {}};
  if (wishes.events && files_.events.exists()) deletion.events = events_of(removal);
  if (wishes.macros && files_.macros.exists()) deletion.macros = macros_of(removal);
  if (!files_.decide_deletion(deletion)) return Outcome::kFailed;
  if (files_.use_macros()) return Outcome::kDeleted;
  files_.give_up_deletion();
  return Outcome::kFailed;
}

// As the lists are now, in the files that stay locked until it has gone.
DeletedItem HouseDeletion::remember(const Item& item, const HouseRemoval& removal, Wishes wishes) {
  DeletedItem deleted;
  deleted.item = item;
  const std::string room_list = files_.rooms.content().value_or("");
  deleted.rooms = chosen_in_place(room_list, rooms_of(removal));
  LineReader reader(room_list);
  while (const auto line = reader.next()) deleted.beside.emplace(*line);
  if (wishes.events)
    deleted.events = chosen_in_place(files_.events.content().value_or(""), events_of(removal));
  if (wishes.macros)
    deleted.macros = chosen_in_place(files_.macros.content().value_or(""), macros_of(removal));
  return deleted;
}

HouseDeletion::Outcome HouseDeletion::carry_out(const HouseRemoval& removal, DeletedItem& deleted) {
  if (files_.use_events() && files_.use_rooms()) {
    undo_.remember(deleted);
    forget(removal.keys());
    return Outcome::kDeleted;
  }
  files_.give_up_deletion();
  return Outcome::kFailed;
}

Task<void> HouseDeletion::tell_found(const char* what, std::string name, std::size_t count) {
  for (std::size_t found = 0; found < count; ++found) {
    say(std::string("Found ") + what + " for " + name + ". Deleting now.");
    co_await pending_events(loop_);
  }
}

void HouseDeletion::forget(const std::set<std::string>& keys) {
  for (const std::string& key : keys) {
    settings_.remove("type", key);
    DeviceIds::forget(settings_, key);
    state_.forget(key);
  }
}

Task<void> HouseDeletion::finish(Result result, RoomList::View seen_from, Item item) {
  say("Clearing old data ready for re load");
  co_await pending_events(loop_);
  rooms_.cleartree(pane_.Tree);
  co_await module1_.pause(1);
  co_await rooms_.loadlists();
  // A wall switch may have been pressed while a device was still known, or one added anew.
  std::erase_if(result.keys, [this](const std::string& key) { return house_.by_key(key); });
  if (result.outcome == Outcome::kDeleted) forget(result.keys);
  co_await events_.loadevents();
  co_await module1_.pause(1);
  say_end(result.outcome, item);
  if (result.outcome == Outcome::kDeleted) undo_.offer(std::move(result.deleted));
  co_await pending_events(loop_);
  rooms_.cleartree(pane_.Tree);  // another change may have filled it meanwhile
  tree_.loadtree();
  // Whoever went on to something else stays there, unless it is the room that changed.
  const RoomList::View now = rooms_.view();
  if (now == seen_from || (now.panel == &room_panel_.frm_devices && now.room == item.room))
    rooms_.gohome();
  if (result.outcome != Outcome::kFailed) co_return;
  std::string text =
      "Sorry, the files of the house could not be read or written, so your item is still there. "
      "Please check the disk, the permissions of rmlst.hwd, evelst.hwd and macs.hlk, and that no "
      "other program has them open.";
  co_await tell_error(dialogs_, std::move(text));
}

void HouseDeletion::say_end(Outcome outcome, const Item& item) {
  if (outcome == Outcome::kDeleted)
    say("Your item was deleted at " + hh_mm(loop_.local_time()));
  else if (outcome == Outcome::kNotThere)
    say("Nothing was deleted: " + item.name() + " is not in the list any more");
  else
    say("Your item could not be deleted");
}

void HouseDeletion::say(std::string text) {
  status_.panel2 = std::move(text);
}

}  // namespace homewarden
