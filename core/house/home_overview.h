#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "platform/event_loop.h"
#include "ui/home_panel.h"
#include "ui/interface_panel.h"
#include "ui/shared_state.h"
#include "ui/tree_view.h"
#include "x10/device_commands.h"
#include "x10/device_panel.h"
#include "x10/device_state.h"
#include "x10/presses.h"

namespace homewarden {

// What is on, by device and by room, on the home page; and what a press there does. Kept true by
// whatever switches a device; changes that come together are shown together.
class HomeOverview {
 public:
  // `folder` holds the pictures.
  HomeOverview(HomePanel& home, InterfacePanel& interface, const Flags& flags, TreeView& tree,
               ProgramTimers& timers, Operations& operations, EventLoop& loop, HouseIndex& house,
               DeviceState& state, DeviceCommands& commands, Presses& presses, DevicePanel& devices,
               std::filesystem::path folder);

 private:
  struct Switched {
    Device device;
    DeviceOrder before;
  };

  void show_soon();
  Task<void> show_later();
  void show();
  void show_button(bool stays_on);
  void forget_old();
  bool belongs_here(const HomeChip& chip);
  HomeChip chip_of(const Device& device);
  int final_level(const HomeChip& chip) const;
  void press(const std::string& key);
  void press_all_off();
  void take_back();

  HomePanel& home_;
  const Flags& flags_;
  Operations& operations_;
  EventLoop& loop_;
  HouseIndex& house_;
  DeviceState& state_;
  Presses& presses_;
  DevicePanel& devices_;
  std::filesystem::path folder_;
  std::string sending_to_;  // key of the device that a command is on its way to
  // When devices that were shown went off, by key.
  std::map<std::string, std::chrono::milliseconds> went_off_;
  std::vector<Switched> undo_;  // by the last "Turn all off"
  std::chrono::milliseconds undo_since_{0};
  bool is_due_ = false;  // something changed and is not shown yet
};

}  // namespace homewarden
