#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

enum class ChipState {
  kIdle,
  kWaiting,  // a press waits for its turn
  kSending,  // a command to it is on its way
  kNotSent,  // the last command could not be sent
};

// A device on the home page: one that is on, one that a press is under way for or that could not be
// reached, and for a minute one that has been switched off, so that nothing moves under the
// pointer.
struct HomeChip {
  std::string key;  // of the device; "" for none
  std::string name;
  std::string room;
  int level = 0;  // percent; 0 when off
  bool dimmable = false;
  std::string picture;  // path of an image
  ChipState state = ChipState::kIdle;
  std::optional<int> wished;  // percent that a press under way, or one not sent, asks for

  bool operator==(const HomeChip&) const = default;
};

struct RoomTile {
  std::string name;
  std::vector<bool> on;  // of its devices, in their order

  bool operator==(const RoomTile&) const = default;
};

// An event that runs soon, in words.
struct ComingEvent {
  std::string time;  // "06:45"
  bool on = false;
  std::string what;  // "Bedside Lamp on at 40 %"
  std::string when;  // "At sunset, in 22 min"

  bool operator==(const ComingEvent&) const = default;
};

// Home: what is on, the rooms, the next events, and the links that lead on.
struct HomePanel {
  HomePanel();

  static constexpr std::size_t kMostChips = 60;

  Frame frm_home{false};
  Label lab_home;                           // "5 devices are on"
  Label lab_today;                          // "Tuesday 24 November, sunset at 16:03"
  Property<std::vector<HomeChip>> chips;    // kMostChips at most
  Label lab_morechips;                      // how many more are on; hidden when all are shown
  Signal<const std::string&> chip_pressed;  // the key of its device
  Button cmd_alloff{"Turn all off"};        // hidden when nothing is on; then "Undo" for a minute
  Property<std::vector<RoomTile>> tiles;
  Signal<const std::string&> tile_pressed;  // the name of its room
  Property<std::vector<ComingEvent>> coming;
  Label lab_nocoming{"No timed events yet."};
  Label Label3{"Add a new room"};
  Label Label4{"Add a new device"};
  Label Label5{"Add or View timed events"};
  Label Label51{"To auto detect X10 interface, click here"};
  Label Label63{"To manually set X10 port number, click here"};
  Label lab_norooms{"Your house has no rooms yet. Start with \"Add a new room\"."};
  Label lab_notice;  // what is wrong with files and settings; hidden when nothing is
};

// Location and start-up settings. They lie on a page of their own, which the gear at the foot of
// the tree shows.
struct OptionsPanel {
  OptionsPanel();

  Frame frm_settings{false};
  Button cmd_settings{"Settings"};
  Frame Frame1;
  ComboBox com_city;
  CheckBox Check1{"Daylight Saving Time"};
  Label lab_sunset;
  Property<std::optional<int>> sunrise;  // minutes since midnight, of today
  Property<std::optional<int>> sunset;
  Property<int> minute;  // of today, since midnight
  CheckBox chk_service{"Run as a service"};
  CheckBox chk_lww{"Start when I log on"};
  CheckBox chk_startup{"Delayed start"};
  Label lab_files{"All files could be read"};
  Button cmd_folder{"Open folder"};
};

}  // namespace homewarden
