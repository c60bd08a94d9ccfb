#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "platform/dialogs.h"
#include "platform/sound_player.h"
#include "ui/house_panel.h"
#include "ui/shared_state.h"
#include "x10/device_state.h"
#include "x10/presses.h"

namespace homewarden {

// The device panel: the devices of one room in ten slots, each showing what is recorded, whoever
// recorded it. A card acts on the device that it shows, whatever the tree has selected.
class DevicePanel {
 public:
  DevicePanel(HousePanel& panel, const Flags& flags, Operations& operations, HouseIndex& house,
              DeviceState& state, DeviceCommands& commands, Presses& presses, Dialogs& dialogs,
              SoundPlayer& sounds, std::filesystem::path folder);

  // Fills the slots with ten devices of a room, in the order of the list: of a room that is not
  // shown yet the first ones, else those of the page that is shown. A room that is not there
  // empties them.
  void show_room(const std::string& room);
  // Shows the page of the room that has the device; nothing happens for a device of another room.
  void turn_to(const Device& device);
  // The same, and gives its card the keyboard.
  void focus_on(const Device& device);
  // The room that is shown has got another name; the slots stay until show_again().
  void follow_room(const std::string& from, const std::string& to);
  const std::string& room() const { return room_; }
  // What slot 0 to 9 shows; nothing for an empty one.
  std::optional<Device> device_in(int Index) const;
  // Fills the slots anew: the house or what is recorded of it may have changed.
  void show_again();

  // A press on slot `Index`, 0 to 9: `adim` 100 or 0 toggles the device, 1 to 99 sets that level.
  // It returns when the press is taken, not when it is carried out. An empty slot does nothing but
  // show a message, as do a device that is not in the list, one whose address the power line does
  // not have, and any device without an interface.
  Task<void> deviceclicked(int Index, int adim = 0);
  // The same for a device of the house, whether or not it has a slot.
  Task<void> press(Device device);
  // The same as an order, whatever the device is now.
  Task<void> order(Device device, DeviceOrder order);

  // Presses every device of the room that is on, or is to be, and sends an "off" that did not get
  // through again. Shows a message without an interface.
  Task<void> turn_room_off();

  // Give slot 0 to 9 the picture, tip and slider of a device that is on or off. The type is that of
  // the key text, an appliance module when none is stored for it; one that cannot be dimmed has no
  // slider. Nothing is switched or recorded.
  void setpictureon(int slot, const std::string& fullname);
  void setpictureoff(int slot, const std::string& fullname);

  // Returns at once; a missing file plays nothing.
  void playfile(const std::filesystem::path& FileName);

 private:
  struct Slot {
    Device device;
    std::string key;                   // "" when nothing is in the slot
    const DeviceType* type = nullptr;  // as it was when the slot was filled
  };

  Task<void> slider_moved(int Index);
  Task<void> set_level(Device device, int level);
  Task<void> slid_off(int Index);
  Task<void> try_again(int Index);
  void show_page(int page);
  void fill_slots();
  void show_counts();
  bool will_be_on(const std::string& key);
  Task<bool> can_switch(Device device);
  Task<bool> find_device(int Index, Device& device);
  void fill(int Index, const Device& device);
  void empty(int Index);
  void show_slot(int Index);
  CardFace face_of(const Slot& slot);
  void show_device(const std::string& key);
  void set_picture(int slot, const std::string& fullname, const DeviceType& type, bool on);

  HousePanel& panel_;
  const Flags& flags_;
  HouseIndex& house_;
  DeviceState& state_;
  Presses& presses_;
  Dialogs& dialogs_;
  SoundPlayer& sounds_;
  std::filesystem::path folder_;
  std::string room_;
  int page_ = 0;
  std::array<Slot, HousePanel::kSlots> slots_;
  std::string sending_to_;  // key of the device that a command is on its way to
};

}  // namespace homewarden
