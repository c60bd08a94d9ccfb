#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/stories/event_house.h"
#include "ui/key_codes.h"

namespace homewarden::testing {

inline const char* const kKitchens =
    "Kitchen~~~\r\nKitchen~Lamp~A~1\r\nKitchen~Lamp2~A~2\r\nBig Kitchen~Lamp~A~3\r\n"
    "Hallway~Lamp~B~1\r\nHall~Lamp~B~2\r\nTown Hall~Lamp~B~3\r\n";
inline const char* const kKitchenEvents =
    "Kitchen Lamp~A~1~40~07:30~on~daily~m\r\nBig Kitchen Lamp~A~3~40~07:30~on~daily~m\r\n"
    "Kitchen Lamp2~A~2~40~07:30~on~daily~m\r\nkitchen lamp~A~1~ ~08:30~off~daily~m\r\n";

// Says Yes but to the questions of the titles refused.
struct ChoosyDialogs : FakeDialogs {
  using FakeDialogs::FakeDialogs;
  Task<Answer> message_box(Message message) override {
    if (message.buttons == MessageButtons::kYesNo) preselected.insert(message.preselected);
    says_yes = !refused.contains(message.title);
    return FakeDialogs::message_box(std::move(message));
  }
  std::set<std::string> refused;
  std::set<Answer> preselected;
};

// A disk that lets nothing take the place of one file.
struct StubbornFiles : MemoryFiles {
  std::string kept;
  bool rename(const path& from, const path& to) override {
    return to.filename() != kept && MemoryFiles::rename(from, to);
  }
  Exchange exchange(const path& from, const path& to, std::string_view known) override {
    return to.filename() != kept ? MemoryFiles::exchange(from, to, known) : Exchange::kCannot;
  }
};

// A house that people build and take apart.
class HouseEditStory : public ::testing::Test {
 protected:
  HouseEditStory() { house.used_dialogs = &dialogs; }
  FrmMain& open(const std::string& rooms, const std::string& events = {}) {
    house.files.contents.erase(House::file("rmlst.hwd"));
    if (!rooms.empty()) house.files.contents[House::file("rmlst.hwd")] = rooms;
    if (!events.empty()) house.files.contents[House::file("evelst.hwd")] = events;
    house.loop.set_wall_clock(2023, 6, 21, 20, 0, 0);
    FrmMain& form = house.open_connected();
    dialogs.messages.clear();
    house.status_texts.clear();
    return form;
  }
  void add_room(const std::string& name) {
    house.form().Label3.click();
    house.form().txt_roomname.text = name;
    house.form().Command3.click();
    house.loop.advance(1s);
  }
  void add_device(const std::string& room, const std::string& name, const std::string& house_code,
                  const std::string& unit, const std::string& type) {
    FrmMain& form = house.form();
    form.Label4.click();
    form.lst_temproom.text = room;
    form.txt_devname.text = name;
    form.lst_housecode.text = house_code;
    form.lst_device.text = unit;
    form.lst_devicetype.text = type;
    form.Command4.click();
    house.loop.advance(1s);
  }
  void select(const std::string& key) {
    house.form().Tree.selected = house.form().Tree.find(key);
    ASSERT_TRUE(house.form().Tree.selected.get()) << key;
  }
  void delete_item(const std::string& key, House::Time length = 40s) {
    select(key);
    house.press(house.form().Tree, kControlD, length);
  }
  std::string rooms() { return house.files.contents[House::file("rmlst.hwd")]; }
  std::string macros() { return house.files.contents[House::file("macs.hlk")]; }
  std::string events() { return house.files.contents[House::file("evelst.hwd")]; }

  EventHouse house;
  ChoosyDialogs dialogs{house.loop};
};

}  // namespace homewarden::testing
