#include "ui/frm_main.h"

namespace homewarden {
namespace {

const char* const kDayLetters[] = {"M", "T", "W", "T", "F", "S", "S"};
const char* const kDayNames[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                 "Friday", "Saturday", "Sunday"};

void set_event_tool_tips(FrmMain& form) {
  form.lst_eventdevice.tool_tip = "Select your device from this drop down list";
  form.lst_hour.tool_tip = "24 hour mode, select the hour from this list";
  form.lst_min.tool_tip = "Select the minute from this ilst";
  form.lst_dim.tool_tip =
      "Choose the dim level. This has NO effect on appliance modules that don't support dimming";
  form.lst_action.tool_tip = "Choose either on or off as your command";
  form.lst_freq.tool_tip = "Choose either on or off as your command";
  form.Command5.tool_tip = "Click here to create a new event";
  form.Command6.tool_tip = "Click here to save this event";
  form.Command5.bold = true;
  form.Command6.bold = true;
  form.ListView1.tool_tip =
      "Press CTRL & D to delete this event, DOUBLE CLICK here to edit this event";
  for (std::size_t day = 0; day < form.days.size(); ++day) {
    form.days[day].caption = kDayLetters[day];
    form.days[day].tool_tip = kDayNames[day];
  }
}

void set_macro_tool_tips(FrmMain& form) {
  form.com_sel1.tool_tip = "This is the TRIGGER device";
  form.mac_event.tool_tip = "This is the TRIGGER action";
  form.com_sel2.tool_tip = "This is the deivce you wish to be triggered";
  form.mac_whattodo.tool_tip = "Finally this is the action you wish the triggered device to take";
  form.com_savemacro.tool_tip = "Click here to save this macro";
  form.ListVIew2.tool_tip = "Click on any macro in this list to delete it.";
}

}  // namespace

FrmMain::FrmMain() : Window("Homewarden") {
  width = 14400.0F;
  height = 9600.0F;

  for (auto& slider : image1) {
    slider.tool_tip = "Slide up to increase the brightness or Down to decrease the brightness";
    slider.visible = false;
  }
  lab_norooms.visible = false;
  lab_notice.visible = false;
  lab_nodevices.visible = false;
  lab_noevents.visible = false;
  lab_eventnotice.visible = false;
  for (auto& picture : device) picture.visible = false;

  lst_temproom.sorted = true;
  Command3.tool_tip = "Click here to save this room name";
  com_city.tool_tip =
      "Select the nearest City to you from this drop down list, this will be used to calculate "
      "Sunrise and Sunset times.";
  set_event_tool_tips(*this);
  set_macro_tool_tips(*this);

  for (const char* profile :
       {"Christmas", "Events 1", "Events 2", "Events 3", "Holiday", "Standard", "Weekends"})
    com_profile.add(profile);

  mnuPopup.entries = {&mnu_deletetree};
  mnuPopup1.entries = {&mnu_delevent, &mnu_newevent, &mnu_line1, &mnu_runeventnow};
  sspp3.entries = {&mnu_about, &mnu_line2, &mnu_exit};
}

}  // namespace homewarden
