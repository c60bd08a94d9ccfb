#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "automation/event_record.h"
#include "base/operations.h"
#include "core/house/find_words.h"
#include "core/house_index.h"
#include "platform/event_loop.h"
#include "sun/location.h"
#include "ui/event_panel.h"
#include "ui/finder_panel.h"
#include "ui/navigation_pane.h"
#include "x10/device_panel.h"
#include "x10/device_state.h"

namespace homewarden {

// What the finder finds, and what is done with it: devices are switched as by a press, everything
// else is shown.
class Finder {
 public:
  Finder(FinderPanel& panel, NavigationPane& pane, EventPanel& events, Operations& operations,
         EventLoop& loop, HouseIndex& house, DeviceState& state, DevicePanel& devices,
         const Location& location, std::filesystem::path folder);

  // Something else that is found, by its title or by words that are no part of it, and opened;
  // passed over while it does not apply.
  void offer(
      std::string title, std::string also_called, std::function<void()> open,
      std::function<bool()> applies = [] { return true; });

 private:
  struct Offer {
    std::string title;
    std::string also_called;
    std::function<void()> open;
    std::function<bool()> applies;
  };

  // What is behind an entry of the panel.
  struct Meant {
    Found shown;
    int score = 0;
    Device device;
    DeviceOrder order;
    std::string node;  // key in the tree of what is shown
    int event = -1;    // row of the event list
  };

  void open();
  void find();
  FindWords words_typed() const;
  void find_switches(const FindWords& words, std::vector<Meant>& found) const;
  void find_rooms_off(const FindWords& words, std::vector<Meant>& found) const;
  void find_places(const FindWords& words, std::vector<Meant>& found) const;
  void find_events(const FindWords& words, std::vector<Meant>& found) const;
  Meant switch_of(const Device& device, DeviceOrder order) const;
  int count_on(const std::string& room) const;
  void do_chosen();
  void show_chosen();
  void go_to(const Meant& meant);
  const Meant* chosen() const;
  Task<void> switch_room_off(std::string room);

  FinderPanel& panel_;
  TreeView& tree_;
  EventPanel& events_;
  Operations& operations_;
  EventLoop& loop_;
  HouseIndex& house_;
  DeviceState& state_;
  DevicePanel& devices_;
  const Location& location_;
  std::filesystem::path folder_;
  std::vector<Offer> offers_;
  std::vector<Meant> meant_;
};

}  // namespace homewarden
