#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/devices.h"

namespace homewarden {

// What deleting a room or a device takes out of the lists of the house.
//
// The lines that are it are taken; only when there is none, those that differ from it in letter
// case or address. Events and macros of a device that stays are never taken, though it may bear
// the same name: the address tells.
class HouseRemoval {
 public:
  // A node of the tree.
  struct Item {
    std::string room;
    std::string device;    // "" for the room as a whole
    std::string tree_key;  // Device::tree_key(), which has its address

    bool is_room() const { return device.empty() && tree_key.empty(); }
    // "Kitchen" or "Kitchen, Lamp", whether or not the house still has it.
    std::string name() const { return is_room() ? room : room + ", " + device; }
  };

  // `room_list` is the content of the list's file.
  HouseRemoval(Item item, std::string_view room_list);

  // How many lines of the room list go; 0 when the item is not there.
  std::size_t lines() const { return lines_; }
  // Lower-case keys of the devices that go, less those that a device which stays has too.
  const std::set<std::string>& keys() const { return keys_; }
  // For a person: "Kitchen, Lamp (A3)", without the address when no such device is in the list; of
  // a room how many devices it has.
  std::string description() const;

  bool takes_room_line(std::string_view line) const;
  bool takes_event(std::string_view line) const;
  // A macro goes when the device is its trigger or its target.
  bool takes_macro(std::string_view line) const;

 private:
  void add_going(const Device& device);
  bool is_exactly(const ListLine& entry) const;
  bool is_alike(const ListLine& entry) const;

  Item item_;
  bool has_exact_ = false;
  std::size_t lines_ = 0;
  std::vector<Device> going_;
  std::set<std::string> keys_;
  // As events and macros name devices, lower-case: without and with their addresses.
  std::set<std::string> names_going_;
  std::set<std::string> going_at_;
  std::set<std::string> staying_at_;
};

}  // namespace homewarden
