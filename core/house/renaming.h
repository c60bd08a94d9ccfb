#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/devices.h"
#include "core/house/house_removal.h"

namespace homewarden {

// What a new name, room or address of a device, or a new name of a room, makes of the lines that
// name it. Which lines those are is what a removal would take: the address tells devices of one
// name apart.
class Renaming {
 public:
  // `room_list` is the content of the list's file. Lines that stand there twice change together.
  static Renaming of_device(const Device& from, const Device& to, std::string_view room_list);
  static Renaming of_room(const std::string& from, const std::string& to,
                          std::string_view room_list);

  struct Step {
    Device from;
    Device to;
  };
  // The devices that change; none for one that is not in the list.
  const std::vector<Step>& steps() const { return steps_; }
  // How many lines of the room list change; 0 when what is to be renamed is not there.
  std::size_t lines() const { return lines_of_.lines(); }
  const std::string& new_room() const { return new_room_; }  // "" when a device changes
  const std::string& old_room() const { return old_room_; }
  // The room list without the lines that change: what the new names must not collide with.
  const std::vector<std::string>& others() const { return others_; }

  // The line that takes the place of this one; nothing when it stays.
  std::optional<std::string> room_line(std::string_view line) const;
  // Also of the key of an event. An event at another address than its device's keeps the address.
  std::optional<std::string> event(std::string_view line) const;
  std::optional<std::string> macro(std::string_view line) const;

 private:
  Renaming(HouseRemoval::Item item, std::string new_room, std::string_view room_list);
  const Step* step_of(std::string_view roomdevice, std::string_view address) const;

  HouseRemoval lines_of_;
  std::string old_room_;
  std::string new_room_;
  std::vector<Step> steps_;
  std::vector<std::string> others_;
};

}  // namespace homewarden
