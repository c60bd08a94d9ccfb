#pragma once

#include <array>

#include "ui/controls.h"

namespace homewarden {

// The devices of one room: ten slots, each a picture, a name and a brightness slider.
struct HousePanel {
  HousePanel();

  static constexpr int kSlots = 10;

  Frame frm_devices{false};
  Label lab_room;
  Label lab_nodevices{"This room has no devices yet. Go to Home and choose \"Add a new device\"."};
  std::array<Picture, kSlots> device;
  std::array<Label, kSlots> devicename;
  std::array<Slider, kSlots> image1;
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
