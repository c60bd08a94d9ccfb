#pragma once

#include <array>
#include <vector>

#include "ui/controls.h"
#include "ui/event_face.h"

namespace homewarden {

// The entries of `lst_eventorder`.
inline constexpr const char* kByNextRun = "Next run";
inline constexpr const char* kByDevice = "Device";
inline constexpr const char* kByRoom = "Room";

// The timed events, their editor beside them, and the list's pop-up menu.
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
      "You have no timed events yet. Choose a device, a time and the days, then click Save."};
  Label lab_nomatch{"No event has these words."};  // while the filter lets none through
  Label lab_eventnotice;  // what is wrong with the event list; hidden when nothing is
  Label lab_undo;         // names the event deleted last; a click brings it back

  // The same events as sentences: those that the filter lets through, in the order that is chosen.
  Property<std::vector<EventFace>> eventfaces;
  Label lab_eventcount;  // "8 events in the profile Standard"
  TextBox txt_eventfilter;
  ComboBox lst_eventorder;
  CheckBox chk_columns{"Columns"};  // the eight columns instead of the sentences

  // The editor: what it is for, the sentence that the boxes make, and when that runs next.
  Property<bool> editor_open{false};  // asked for, where there is no room for both
  Label lab_eventtitle{"New event"};
  Label lab_sentence;
  Label lab_nextrun;
  Button cmd_runnow{"Run now"};      // what stands in the boxes, once
  Button cmd_deleteevent{"Delete"};  // the event that is edited

  Menu mnuPopup1{"Menu2"};
  MenuEntry mnu_delevent{"Delete this event", "Ctrl+D"};
  MenuEntry mnu_newevent{"Add New Event", "Ctrl+N"};
  MenuEntry mnu_line1{"-"};
  MenuEntry mnu_runeventnow{"Run this event now"};

  Timer flashsave{0, true};
  Timer eventclock{0, true, Timer::Start::kWholeMinute};  // while the panel shows
};

}  // namespace homewarden
