#pragma once

#include <array>

#include "ui/controls.h"

namespace homewarden {

// The timed events, their editor above them, and the list's pop-up menu.
struct EventPanel {
  EventPanel();

  Frame frm_event{false};
  ComboBox lst_eventdevice;
  ComboBox lst_action;
  Label Label29{"and Dim to"};
  ComboBox lst_dim;
  ComboBox lst_hour;
  ComboBox lst_min;
  ComboBox lst_freq;
  std::array<CheckBox, 7> days;  // Monday first
  Button Command5{"New"};
  Button Command6{"Save"};
  Button cmd_cancel{"Cancel"};  // while an event is edited: leaves it as it was
  ListView ListView1;
  Label lab_noevents{
      "You have no timed events yet. Choose a device, a time and the days above, then click Save."};
  Label lab_eventnotice;  // what is wrong with the event list; hidden when nothing is
  Label lab_undo;         // names the event deleted last; a click brings it back

  Menu mnuPopup1{"Menu2"};
  MenuEntry mnu_delevent{"Delete this event"};
  MenuEntry mnu_newevent{"Add New Event"};
  MenuEntry mnu_line1{"-"};
  MenuEntry mnu_runeventnow{"Run this event now"};

  Timer flashsave{0, true};
};

}  // namespace homewarden
