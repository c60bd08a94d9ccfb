#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "core/house_index.h"
#include "core/settings.h"

namespace homewarden {

// What programs call the devices of the house: letters and digits of ASCII, "_" and "-". Made of
// the key of a device when it is new; another name, room, address or type later changes nothing of
// it. The ids that are not made of the key which the device has now are kept in the settings.
//
// Devices that share a key, which a file written by hand allows, share its id as they share type
// and state; by_id() finds the first of them.
class DeviceIds {
 public:
  // Follows the house. To be connected before whoever asks for ids when the house changes.
  DeviceIds(Settings& settings, HouseIndex& house);
  DeviceIds(const DeviceIds&) = delete;
  DeviceIds& operator=(const DeviceIds&) = delete;

  // "" for a key that no device of the house has. Letter case is ignored, as in the next one's key.
  const std::string& of(std::string_view key) const;
  // Nullptr for an id that no device has; letter case counts. Valid as long as the house is.
  const Device* by_id(std::string_view id) const;

  // The id that is recorded for a key, whether or not a device has it, else the one made of it.
  static std::string recorded(const Settings& settings, const std::string& key);
  static void record(Settings& settings, const std::string& key, const std::string& id);
  static void forget(Settings& settings, const std::string& key);

 private:
  using Ids = std::unordered_map<std::string, std::string>;

  void look() const;
  void number() const;

  Settings& settings_;
  HouseIndex& house_;
  // Numbered anew when the settings, which could not be read before, can be.
  mutable bool are_known_ = false;
  mutable Ids ids_;   // by the lower-case key
  mutable Ids keys_;  // by the id
};

}  // namespace homewarden
