#include "ui/house_panel.h"

namespace homewarden {

HousePanel::HousePanel() {
  for (auto& slider : image1) {
    slider.tool_tip = "Slide up to increase the brightness or Down to decrease the brightness";
    slider.visible = false;
  }
  for (auto& picture : device) picture.visible = false;
  for (auto& label : lab_notsent) {
    label.caption = "Not sent. Try again";
    label.tool_tip = "The last command could not be sent to this device. Click to send it again";
    label.visible = false;
  }
  lab_nodevices.visible = false;
  cmd_adddevice.tool_tip = "Add a device to this room (Ctrl+N)";
  cmd_roomoff.tool_tip = "Turn off every device of this room that is on";
  for (Label* label : {&change.lab_changehint, &change.lab_changewrong}) label->visible = false;
}

AddRoomPanel::AddRoomPanel() {
  Command3.tool_tip = "Click here to save this room name";
}

AddDevicePanel::AddDevicePanel() {
  lst_temproom.sorted = true;
}

}  // namespace homewarden
