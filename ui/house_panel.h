#pragma once

#include <array>
#include <optional>
#include <string>

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

// The devices of one room: ten slots, each a picture, a name, a brightness slider, and what became
// of the last press.
struct HousePanel {
  HousePanel();

  static constexpr int kSlots = 10;

  Frame frm_devices{false};
  Label lab_room;
  Label lab_nodevices{"This room has no devices yet. Go to Home and choose \"Add a new device\"."};
  std::array<Picture, kSlots> device;
  std::array<Label, kSlots> devicename;
  std::array<Slider, kSlots> image1;
  std::array<Property<CardFace>, kSlots> cardface;
  // Shown when the last command to the device could not be sent; a click sends it again.
  std::array<Label, kSlots> lab_notsent;
};

// A room is added.
struct AddRoomPanel {
  AddRoomPanel();

  Frame frm_addroom{false};
  TextBox txt_roomname;
  Button Command3{"Save"};
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
};

}  // namespace homewarden
