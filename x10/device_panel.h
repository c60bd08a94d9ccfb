#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/devices.h"
#include "core/house_index.h"
#include "platform/dialogs.h"
#include "platform/sound_player.h"
#include "ui/frm_main.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"

namespace homewarden {

// The ten slots of the device panel: what a click and a slider do, and how a slot shows its device.
class DevicePanel {
 public:
  DevicePanel(FrmMain& form, Operations& operations, HouseIndex& house, DeviceState& state,
              DeviceCommands& commands, Dialogs& dialogs, SoundPlayer& sounds,
              std::filesystem::path folder);

  // Switches the device in slot `Index`, 0 to 9, of the room that the tree has selected: `adim` 100
  // or 0 toggles it, any other level sets its brightness; on return `adim` is the level recorded.
  // Does nothing but show a message without an interface, for a device that is not in the list, and
  // for one whose address the power line does not have.
  Task<void> deviceclicked(int Index, int& adim);
  Task<void> deviceclicked(int Index);

  // Show the device with this key text in a slot.
  void setpictureon(int slot, const std::string& fullname);
  void setpictureoff(int slot, const std::string& fullname);

  void playfile(const std::filesystem::path& FileName);

 private:
  Task<void> slider_moved(int Index);
  std::optional<std::string> find_line(const std::string& room, const std::string& device) const;
  Task<void> show_error(std::string text);
  void move_slider(int Index, int value);
  void set_picture(int slot, const std::string& fullname, bool on);

  FrmMain& form_;
  HouseIndex& house_;
  DeviceState& state_;
  DeviceCommands& commands_;
  Dialogs& dialogs_;
  SoundPlayer& sounds_;
  std::filesystem::path folder_;
};

}  // namespace homewarden
