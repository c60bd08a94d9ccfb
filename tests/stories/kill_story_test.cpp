// The power goes between any two changes of the files and settings, in the middle of a write too;
// then the program starts again. Or somebody saves the lists in an editor at such a moment.

#include <algorithm>
#include <functional>
#include <map>

#include "api/event_answers.h"
#include "core/device_ids.h"
#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

using Contents = std::map<std::string, std::string>;

const char* const kRooms = "Kitchen~~~\r\nKitchen~Lamp~A~1\r\nHall~~~\r\nHall~Bell~B~1\r\n";
const char* const kEvents =
    "Kitchen Lamp~A~1~40~07:30~on~daily~m\r\nHall Bell~B~1~ ~08:00~off~daily~m\r\n";
const char* const kMacros =
    "When~A1~Kitchen~Lamp~turns~on~Turn~On~B1~Hall~Bell\r\n"
    "When~B1~Hall~Bell~turns~on~Turn~Off~A1~Kitchen~Lamp\r\n";
const char* const kHoliday = "Hall Bell~B~1~ ~09:00~off~daily~m\r\n";

void add_room(EventHouse& house) {
  house.form().txt_roomname.text = "Attic";
  house.form().Command3.click();
}
void add_device(EventHouse& house) {
  house.form().lst_temproom.text = "Hall";
  house.form().txt_devname.text = "Fan";
  house.form().lst_devicetype.text = "Fan (appliance module)";
  house.form().Command4.click();
}
void delete_node(EventHouse& house, const char* key) {
  house.form().Tree.selected = house.form().Tree.find(key);
  house.form().Tree.key_press(4);
}
void delete_device(EventHouse& house) {
  delete_node(house, "Lamp~A~1");
}
void delete_room(EventHouse& house) {
  delete_node(house, "Kitchen");
}
void undo_deletion(EventHouse& house) {
  house.form().undo_latest_asked();
}
void open_bell(EventHouse& house) {
  house.form().Tree.selected = house.form().Tree.find("Hall");
  house.form().card_order(0, CardOrder::kRename);
}
void rename_device(EventHouse& house) {
  open_bell(house);
  house.form().change.txt_changename.text = "Chime";
  house.form().change.cmd_change.click();
}
void readdress_device(EventHouse& house) {
  open_bell(house);
  house.form().change.lst_changecode.text = "c";
  house.form().change.lst_changenumber.text = "16";
  house.form().change.lst_changetype.text = "Fan (appliance module)";
  house.form().change.cmd_change.click();
}
void move_device(EventHouse& house) {
  house.form().Tree.selected = house.form().Tree.find("Hall");
  house.form().moved_to(0, "Kitchen");
}
void rename_room(EventHouse& house) {
  house.form().Tree.selected = house.form().Tree.find("Hall");
  house.form().mnu_renameroom.click();
  house.form().change.txt_changename.text = "Stairs";
  house.form().change.cmd_change.click();
}
void save_macro(EventHouse& house) {
  house.form().com_sel1.text = "Kitchen Lamp A1";
  house.form().com_sel2.text = "Hall Bell B1";
  house.form().mac_event.text = "Off";
  house.form().com_savemacro.click();
}
void delete_macro(EventHouse& house) {
  house.form().ListVIew2.selected = 0;
  house.form().ListVIew2.mouse_down();
}
void switch_profile(EventHouse& house) {
  house.form().com_profile.text = "Holiday";
  house.form().com_profile.click();
}

void add_event(EventHouse& house) {
  house.form().lst_eventdevice.text = "Hall Bell B1";
  house.form().Command6.click();
}
void edit_event(EventHouse& house) {
  ASSERT_TRUE(house.select_event("Kitchen Lamp"));
  house.form().ListView1.double_click();
  house.form().lst_dim.text = "55%";
  house.form().Command6.click();
}
void delete_event(EventHouse& house) {
  ASSERT_TRUE(house.select_event("Kitchen Lamp"));
  house.form().ListView1.key_press(4);
}
void run_once_event(EventHouse& house) {
  house.form().once_removal[5] = "Hall Bell~B~1~ ~08:00~off~daily";
}

void switch_event(EventHouse& house, const char* enabled) {
  const auto event = parse_event("Kitchen Lamp~A~1~40~07:30~on~daily~m");
  const std::string body = std::string("{\"enabled\": ") + enabled + "}";
  house.web.api({"PUT", "/events/" + event_id(*event), "", body});
}
void switch_event_off(EventHouse& house) {
  switch_event(house, "false");
}
void switch_event_on(EventHouse& house) {
  switch_event(house, "true");
}

// All that there are at some time, with the beginnings of their lines.
const std::map<std::string, std::string> kDevices = {
    {"KitchenLamp", "Kitchen~Lamp~"}, {"HallBell", "Hall~Bell~"},
    {"HallFan", "Hall~Fan~"},         {"HallChime", "Hall~Chime~"},
    {"KitchenBell", "Kitchen~Bell~"}, {"StairsBell", "Stairs~Bell~"}};

struct Operation {
  const char* name;
  void (*start)(EventHouse&);
  void (*prepare)(EventHouse&) = [](EventHouse&) {};  // done and ended before it
};

void PrintTo(const Operation& operation, std::ostream* out) {
  *out << operation.name;
}

class KillStory : public ::testing::TestWithParam<Operation> {
 protected:
  static void furnish(EventHouse& house) {
    house.files.contents = {{House::file("rmlst.hwd"), kRooms},
                            {House::file("evelst.hwd"), kEvents},
                            {House::file("macs.hlk"), kMacros},
                            {House::file("Holiday.txt"), kHoliday}};
    house.settings.write("type", "KitchenLamp", "bulb");
    house.settings.write("type", "HallBell", "radio");
  }
  // All data files and what matters of the settings.
  static Contents state_of(EventHouse& house) {
    Contents state;
    for (const auto& [file, content] : house.files.contents)
      state[file.filename().string()] = content;
    state["(profile)"] = house.settings.read("data", "profile", "Standard");
    for (const auto& [key, line] : kDevices)
      state[std::string("(type ") + key + ")"] =
          house.settings.read("type", key, "") + " " + DeviceIds::recorded(house.settings, key);
    return state;
  }
  // Runs the operation with the power gone at the n-th change, 0 for never, and starts again.
  static Contents run(const Operation& operation, int stop, std::size_t torn_percent,
                      int* steps = nullptr,
                      const std::function<void(EventHouse&)>& meanwhile = nullptr,
                      const std::function<void(EventHouse&)>& while_off = nullptr) {
    EventHouse house;
    house.files.torn_percent = torn_percent;
    furnish(house);
    house.open_connected();
    operation.prepare(house);
    house.loop.advance(40s);
    house.registry.is_lazy = true;
    house.registry.may_change = [&house] { return house.files.step(); };
    house.files.stop_at(stop);
    if (meanwhile) meanwhile(house);
    operation.start(house);
    house.loop.advance(40s);
    if (steps) *steps = house.files.steps();
    house.forget_program();
    house.registry.lose_unwritten();
    house.files.no_stop();
    house.files.before_change = nullptr;
    house.registry.may_change = nullptr;
    if (while_off) while_off(house);
    house.open();
    house.loop.advance(2s);
    return state_of(house);
  }
};

const char* const kOff = "Standard (off).txt";

// An event that is in both lists is on, and not among those that are off.
void leave_out_doubled(Contents& state) {
  std::string& off = state[kOff];
  std::string left;
  LineReader reader(off);
  while (const auto line = reader.next())
    if (state["evelst.hwd"].find(std::string(*line) + "\r\n") == std::string::npos)
      left.append(*line).append("\r\n");
  off = std::move(left);
}

bool has_scratch_file(const Contents& state) {
  return std::any_of(state.begin(), state.end(), [](const auto& entry) {
    const std::string& name = entry.first;
    return name.ends_with(".tmp") || name.ends_with(".new") || name.starts_with("temp");
  });
}

// What is recorded of a type may be there for a device that is not there yet or any more, and the
// active profile may have a file that nobody reads.
bool same_house(Contents a, Contents b) {
  for (Contents* state : {&a, &b}) leave_out_doubled(*state);
  for (Contents* state : {&a, &b}) state->erase((*state)["(profile)"] + ".txt");
  for (Contents* state : {&a, &b})
    for (const auto& [key, line] : kDevices)
      if ((*state)["rmlst.hwd"].find(line) == std::string::npos) state->erase("(type " + key + ")");
  return a == b;
}

TEST_P(KillStory, NothingIsLostNothingIsDoubledAndNoScratchFileStays) {
  int steps = 0;
  const auto nothing = [](EventHouse&) {};
  const Contents before = run({"nothing", nothing, GetParam().prepare}, 0, 0);
  const Contents after = run(GetParam(), 0, 0, &steps);
  EXPECT_FALSE(same_house(before, after)) << "the operation did nothing";
  EXPECT_FALSE(has_scratch_file(after));
  ASSERT_GE(steps, 2);
  int finished = 0;
  for (int stop = 1; stop <= steps; ++stop) {
    for (const std::size_t torn_percent : {0u, 50u, 100u}) {
      const Contents found = run(GetParam(), stop, torn_percent);
      const bool done = same_house(found, after);
      EXPECT_FALSE(has_scratch_file(found)) << "stopped at change " << stop;
      EXPECT_TRUE(done || same_house(found, before))
          << "stopped at change " << stop << " of " << steps << " with " << torn_percent
          << " % of it done:\n"
          << ::testing::PrintToString(found);
      if (done) ++finished;
    }
  }
  EXPECT_LT(finished, 3 * steps) << "every stop came too late";
}

// Each list gets a line more behind the program's back, and keeps it.
TEST_P(KillStory, WhatAnEditorSavesAtAnyMomentIsKept) {
  const std::map<std::string, std::string> saved = {
      {"rmlst.hwd", "Attic Room~~~\r\n"},
      {"evelst.hwd", "Porch Light~C~5~ ~11:11~off~daily~m\r\n"},
      {"macs.hlk", "When~C5~Porch~Light~turns~off~Turn~Off~C5~Porch~Light\r\n"}};
  const auto save = [&saved](EventHouse& house) {
    for (const auto& [list, line] : saved) house.content(list) += line;
  };
  int steps = 0;
  const Contents before = run(GetParam(), 1, 0);
  const Contents after = run(GetParam(), 0, 0, &steps);
  const auto expect_kept = [&](Contents found, bool done, const std::string& when) {
    for (const auto& [list, line] : saved) {
      bool kept = false;
      for (auto& [name, content] : found) {
        const auto at = content.find(line);
        if (at == std::string::npos) continue;
        content.erase(at, line.size());
        kept = kept || name == list || (list == "evelst.hwd" && name == "Standard.txt");
      }
      EXPECT_TRUE(kept) << "lost from " << list << when;
    }
    EXPECT_TRUE(same_house(found, after) || (!done && same_house(found, before)))
        << when << "\n"
        << ::testing::PrintToString(found);
  };
  for (int step = 1; step <= steps; ++step) {
    const auto at_step = [&, step](EventHouse& house) {
      house.files.before_change = [&, step](int n) {
        if (n == step) save(house);
      };
    };
    const std::string when = " at change " + std::to_string(step);
    expect_kept(run(GetParam(), 0, 0, nullptr, at_step), true, when);
    expect_kept(run(GetParam(), step, 50, nullptr, nullptr, save), false, when + ", while off");
  }
  for (int halves = 1; halves < 30; ++halves) {
    const auto in_a_while = [&, halves](EventHouse& house) {
      house.files.exchanges = false;
      house.loop.call_after(halves * 500ms - 100ms, [&] { save(house); });
    };
    expect_kept(run(GetParam(), 0, 0, nullptr, in_a_while), true,
                " after " + std::to_string(halves) + " half seconds");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Operations, KillStory,
    ::testing::Values(
        Operation{"room", add_room}, Operation{"device", add_device},
        Operation{"deleted device", delete_device}, Operation{"deleted room", delete_room},
        Operation{"device put back", undo_deletion, delete_device},
        Operation{"room put back", undo_deletion, delete_room}, Operation{"renamed", rename_device},
        Operation{"moved", move_device}, Operation{"readdressed", readdress_device},
        Operation{"renamed room", rename_room}, Operation{"macro", save_macro},
        Operation{"deleted macro", delete_macro}, Operation{"switch", switch_profile},
        Operation{"event", add_event}, Operation{"edited event", edit_event},
        Operation{"deleted event", delete_event}, Operation{"once event", run_once_event},
        Operation{"event off", switch_event_off},
        Operation{"event on", switch_event_on, switch_event_off}));

}  // namespace
}  // namespace homewarden::testing
