#include "ui/event_panel.h"

#include <cstddef>

namespace homewarden {
namespace {

const char* const kDayCaptions[] = {"M", "T", "W", "T", "F", "S", "S"};
const char* const kDayNames[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                 "Friday", "Saturday", "Sunday"};

}  // namespace

EventPanel::EventPanel() {
  lst_eventdevice.tool_tip = "Select your device from this drop down list";
  lst_hour.tool_tip = "24 hour mode, select the hour from this list";
  lst_min.tool_tip = "Select the minute from this ilst";
  lst_dim.tool_tip =
      "Choose the dim level. This has NO effect on appliance modules that don't support dimming";
  lst_action.tool_tip = "Choose either on or off as your command";
  lst_freq.tool_tip = "Choose either on or off as your command";
  Command5.tool_tip = "Click here to create a new event";
  Command6.tool_tip = "Click here to save this event";
  Command5.bold = true;
  Command6.bold = true;
  cmd_cancel.tool_tip = "Click here to leave this event as it was";
  lab_undo.tool_tip = "Click here to bring the deleted event back";
  ListView1.tool_tip = "Press CTRL & D to delete this event, DOUBLE CLICK here to edit this event";
  for (std::size_t day = 0; day < days.size(); ++day) {
    days[day].caption = kDayCaptions[day];
    days[day].tool_tip = kDayNames[day];
  }
  lst_eventorder.items = std::vector<std::string>{kByNextRun, kByDevice, kByRoom};
  lst_eventorder.text = kByNextRun;
  txt_eventfilter.tool_tip = "Shows the events whose words hold all of these";
  chk_columns.tool_tip = "Shows the events as they are stored, in eight columns";
  cmd_runnow.tool_tip = "Click here to carry this event out now";
  cmd_deleteevent.tool_tip = "Click here to delete this event";
  cmd_deleteevent.visible = false;
  lab_noevents.visible = false;
  lab_nomatch.visible = false;
  lab_eventnotice.visible = false;
  lab_undo.visible = false;
  cmd_cancel.visible = false;
  // A row has a button of its own; beside a new event it would be taken for that of the row.
  cmd_runnow.visible = false;
  cmd_cancel.visible.changed.connect([this] { cmd_runnow.visible = cmd_cancel.visible.get(); });
  mnuPopup1.entries = {&mnu_delevent, &mnu_newevent, &mnu_line1, &mnu_runeventnow};
}

}  // namespace homewarden
