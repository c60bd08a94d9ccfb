#pragma once

#include "core/house_index.h"
#include "ui/event_panel.h"
#include "ui/house_panel.h"
#include "ui/macro_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// The lists that rooms and devices are chosen from: in the event and macro editors and where a
// device is added.
class DeviceSelectors {
 public:
  DeviceSelectors(EventPanel& events, MacroPanel& macros, AddDevicePanel& adding,
                  HiddenLists& hidden);

  // Fills them from the house; the last device and the last room are chosen. What a person has
  // chosen on a panel that is shown stays as it is.
  void fill(const HouseIndex& house);

 private:
  EventPanel& events_;
  MacroPanel& macros_;
  AddDevicePanel& adding_;
  HiddenLists& hidden_;
};

}  // namespace homewarden
