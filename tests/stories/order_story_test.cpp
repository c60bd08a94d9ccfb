// Every order of clicks and keys on tree and cards, and every level on every path.

#include <map>
#include <random>

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

const std::map<std::string, std::string> kAddresses = {
    {"Big Kitchen/Lamp", "A12"}, {"Big Kitchen/Lamp Two", "A11"}, {"Kitchen/Lamp", "A1"},
    {"Kitchen/Lamp Two", "A10"}, {"Bed/room Fan", "B1"},          {"Hall/Lamp", "C3"},
    {"Porch/Lamp", "C3"},        {"Porch/caf\xE9 \"x\"", "P16"}};

std::string room_list() {
  std::string list = "Kitchen~~~\r\nEmpty~~~\r\n";
  for (const auto& [name, address] : kAddresses)
    list +=
        replace_all(name, "/", "~") + "~" + address.substr(0, 1) + "~" + address.substr(1) + "\r\n";
  return list;
}

// Whatever was pressed, clicked or typed before: the lamp that is meant is the one that acts.
TEST(OrderStory, TheDeviceWhoseCardOrNodeIsPressedActs) {
  House house(room_list());
  FrmMain& form = house.open_connected();
  std::vector<TreeNode*> nodes;
  for (const auto& root : form.Tree.roots()) {
    nodes.push_back(root.get());
    for (const auto& child : root->children) nodes.push_back(child.get());
  }
  ASSERT_EQ(nodes.size(), 5u + 6u + kAddresses.size()) << "a device has no node";
  std::mt19937 random(1);
  const auto pick = [&random](std::size_t count) { return random() % count; };
  int presses = 0;
  for (int step = 0; step < 4000; ++step) {
    std::string meant;
    switch (pick(6)) {
      case 0:  // a left click, or Enter
        form.Tree.selected = nodes[pick(nodes.size())];
        [[fallthrough]];
      case 1: {
        const TreeNode* node = form.Tree.selected;
        if (node && node->parent) meant = node->parent->text + "/" + node->text;
        form.Tree.click();
        break;
      }
      case 2:  // a right click, an arrow key
        form.Tree.selected = nodes[pick(nodes.size())];
        form.Tree.mouse_down(2);
        break;
      case 3:  // a right click on nothing
        form.Tree.selected = nullptr;
        break;
      default: {  // a card
        const std::size_t slot = pick(4);
        if (!form.frm_devices.visible || !form.device[slot].visible) continue;
        meant = form.lab_room.caption.get() + "/" + form.devicename[slot].caption.get();
        form.device[slot].click();
      }
    }
    const TreeNode* node = form.Tree.selected;
    if (form.frm_devices.visible && node) {
      ASSERT_EQ(form.lab_room.caption.get(), node->parent ? node->parent->text : node->text);
    }
    house.loop.advance(3s);
    const auto line = house.line();
    if (meant.empty()) {
      ASSERT_TRUE(line.empty()) << "nothing was pressed, but " << line.front();
      continue;
    }
    ++presses;
    ASSERT_EQ(line.size(), 1u) << meant;
    ASSERT_THAT(line.front(), HasSubstr(" " + kAddresses.at(meant) + " ")) << meant;
  }
  EXPECT_GT(presses, 500);
}

// The exact address goes before one that merely begins with it.
TEST(OrderStory, IncomingCommandsReachTheirOwnDevice) {
  House house("Attic~Lamp~A~12\r\nBath~Lamp~A~1\r\nBath~Heater~A~10\r\nCellar~Lamp~B~12\r\n");
  house.open_connected();
  for (const char* address : {"A1", "A10", "A12"}) {
    house.receive(address, 2, 1s);
  }
  for (const char* key : {"BathLamp", "BathHeater", "AtticLamp"})
    EXPECT_EQ(house.machine(key), "True");
  house.receive("B1", 2, 1s);
  EXPECT_EQ(house.machine("CellarLamp"), "True") << "without an exact one, containment decides";
}

class LevelStory : public ::testing::TestWithParam<int> {};

std::string level_text(int level) {
  return std::to_string(level);
}

// A room of so many devices; each level from 0 to 100 on each of them by each way there is.
TEST_P(LevelStory, WhatIsSentIsRecordedAndShown) {
  const int size = GetParam();
  std::string list = "Room~~~\r\n";
  std::string events;
  std::vector<std::string> names;
  for (int i = 0; i < size; ++i) {
    names.push_back(std::string("Lamp ") + static_cast<char>('A' + i));
    list += "Room~" + names.back() + "~D~" + std::to_string(i + 1) + "\r\n";
  }
  EventHouse house;
  house.content("rmlst.hwd") = list;
  for (const std::string& name : names)
    house.settings.write("type", without_blanks("Room" + name), "bulb");
  house.loop.set_wall_clock(2023, 6, 21, 0, 0, 0);
  FrmMain& form = house.open_connected();
  house.click_node("Room");
  const auto expect = [&](int i, int level, const std::string& way) {
    const auto slot = static_cast<std::size_t>(i);
    const std::string key = without_blanks("Room" + names[slot]);
    ASSERT_EQ(house.machine(key) + house.machine("dim" + key), "True" + level_text(level)) << way;
    if (i < HousePanel::kSlots) {
      ASSERT_EQ(form.image1[slot].value.get(), level) << way;
    }
  };
  const auto dimmed = [&house](int level) {
    const auto log = house.line();
    return level == 100 || (!log.empty() && log.back().ends_with(" 4 " + level_text(100 - level)));
  };
  for (int i = 0; i < size; ++i) {
    const std::string unit = std::to_string(i + 1);
    const std::string key = without_blanks("Room" + names[static_cast<std::size_t>(i)]);
    for (int level = 0; level <= 100; level += 5) {
      const std::string lamp = unit + " at " + level_text(level);
      const LocalTime now = house.loop.local_time();
      const int due = (now.hour * 60 + now.minute + 1) % (24 * 60);
      house.content("evelst.hwd") = "Room " + names[static_cast<std::size_t>(i)] + "~D~" + unit +
                                    "~" + level_text(level) + "~" + two_digits(due / 60) + ":" +
                                    two_digits(due % 60) + "~on~daily~mtwufsr\r\n";
      house.loop.advance(60s);
      ASSERT_TRUE(dimmed(level)) << "event " << lamp;
      expect(i, level, "event " + lamp);
      if (level >= 20 && i < HousePanel::kSlots) {
        house.slide(static_cast<std::size_t>(i), level, 5s);
        ASSERT_TRUE(dimmed(level)) << "card " << lamp;
        expect(i, level, "card " + lamp);
      }
    }
    form.txt_queue.text = "2D" + unit + "~";
    house.loop.advance(5s);
    expect(i, 100, "queue " + unit);
    house.web.request("index.html", "D~" + unit + "~" + key + "~turnon~Room");
    house.loop.advance(5s);
    expect(i, 100, "web " + unit);
  }
}

INSTANTIATE_TEST_SUITE_P(RoomSizes, LevelStory, ::testing::Range(0, 13));

}  // namespace
}  // namespace homewarden::testing
