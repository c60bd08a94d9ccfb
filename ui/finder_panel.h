#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

// One thing that the words of a person may mean.
struct Found {
  enum class Kind { kDevice, kSwitchOff, kRoom, kPanel, kOffer, kEvent };

  Kind kind = Kind::kPanel;
  std::string group;  // the heading that it stands under
  std::string title;  // "Turn Reading Lamp off"
  std::size_t bold_from = 0;
  std::string detail;   // "Living Room, now 40 %"
  std::string picture;  // path of the device's; "" where a sign stands

  bool operator==(const Found&) const = default;
};

// Finds rooms, devices with their commands, events and panels by a few letters.
struct FinderPanel {
  Frame frm_finder{false};
  TextBox txt_find;
  Property<std::vector<Found>> found;
  Label lab_nothing{"Nothing here is called that"};  // shown when nothing was found
  Property<int> chosen{0};  // a position in `found`; of no meaning when it is empty
  Signal<> opened;          // a person asks for it
  Signal<> do_it;           // what is chosen
  Signal<> show_it;         // the room or panel of what is chosen
  Signal<> closed;          // a person leaves it
};

}  // namespace homewarden
