#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

// What a device's card says of the commands to it.
enum class CardState {
  kIdle,
  kWaiting,  // a press waits for its turn
  kSending,  // a command to it is on its way
};

// What a device's card shows besides its name and picture.
struct CardFace {
  bool on = false;
  int level = 0;  // percent; 0 when off
  bool dimmable = false;
  CardState state = CardState::kIdle;
  // What the last press that waits or is being sent asks for; nothing when the command comes from
  // elsewhere.
  std::optional<int> wished;  // percent; 0 is off
  bool wishes_level = false;  // by the slider
  std::string address;        // "A3"; as the room list has it

  bool operator==(const CardFace&) const = default;
};

// What a card's menu asks for besides another room.
enum class CardOrder { kRename, kChange, kRemove };

// The devices of a room that the ten slots show at a time.
struct RoomPage {
  int first = 1;  // counted from 1
  int last = 1;
  int on = 0;  // how many are
  bool operator==(const RoomPage&) const = default;
};

// Where a device gets another name, room, address or type, or a room another name: beside the cards
// of the room.
struct ChangePanel {
  Frame frm_change{false};
  Label lab_change;
  bool of_room = false;  // set before the frame is shown: there is a name and nothing else
  TextBox txt_changename;
  ComboBox lst_changeroom;
  ComboBox lst_changecode;
  ComboBox lst_changenumber;
  ComboBox lst_changetype;
  Label lab_changehint;   // what may be as it is, and should be known
  Label lab_changewrong;  // why it was not saved
  Button cmd_change{"Save"};
  Button cmd_cancelchange{"Cancel"};
};

// The devices of one room: ten slots, each a picture, a name, a brightness slider, and what became
// of the last press. More devices are on further pages of ten.
struct HousePanel {
  HousePanel();

  static constexpr int kSlots = 10;

  Frame frm_devices{false};
  Label lab_room;
  Label lab_count;  // "3 of 17 on"
  Label lab_nodevices{"This room has no devices yet."};
  Button cmd_roomoff{"Turn room off"};
  Button cmd_adddevice{"Add device"};
  Label lab_nextaddress;  // "Next free address: A 16"
  MenuEntry mnu_renameroom{"Rename"};
  MenuEntry mnu_deleteroom{"Delete"};

  Property<std::vector<RoomPage>> pages;  // one at least
  Property<int> page{0};                  // the one that the slots show, from 0
  Signal<int> page_chosen;

  // False while commands cannot reach the line, as far as is known.
  Property<bool> line_is_up{true};
  std::array<Picture, kSlots> device;
  std::array<Label, kSlots> devicename;
  std::array<Slider, kSlots> image1;
  std::array<Property<CardFace>, kSlots> cardface;
  // A person moved the slider below its least level: the device is to be off.
  std::array<Signal<>, kSlots> slid_off;
  // The menu of slot 0 to 9.
  Signal<int, CardOrder> card_order;
  Property<std::vector<std::string>> other_rooms;  // that a device can be moved to
  Signal<int, const std::string&> moved_to;        // one of these

  ChangePanel change;

  // Shown when the last command to the device could not be sent; a click sends it again.
  std::array<Label, kSlots> lab_notsent;
};

// A room is added.
struct AddRoomPanel {
  AddRoomPanel();

  Frame frm_addroom{false};
  TextBox txt_roomname;
  Button Command3{"Save"};
  Signal<> room_abandoned;  // with the Escape key
};

// A device is added.
struct AddDevicePanel {
  AddDevicePanel();

  Frame frm_adddevice{false};
  ComboBox lst_temproom;
  TextBox txt_devname;
  ComboBox lst_housecode;
  ComboBox lst_device;
  ComboBox lst_devicetype;
  Button Command4{"Save"};
  Signal<> device_abandoned;  // with the Escape key
};

}  // namespace homewarden
