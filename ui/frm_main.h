#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/date.h"
#include "ui/controls.h"
#include "ui/tree_view.h"

namespace homewarden {

// The main window: the navigation tree on its left side, a stack of panels on its right of which
// one is shown at a time, the status bar at its foot; and the state that the operations share.
struct FrmMain : Window {
  FrmMain();

  static constexpr int kSlots = 10;      // devices that the device panel shows
  static constexpr int kOnceSlots = 11;  // entries of once_removal in use

  TreeView Tree;
  StatusBar Statusbar;

  // Home, with the links that lead on.
  Frame frm_home{false};
  Label Label3{"Add a new room"};
  Label Label4{"Add a new device"};
  Label Label5{"Add or View timed events"};
  Label Label51{"To auto detect X10 interface, click here"};
  Label Label63{"To manually set X10 port number, click here"};
  Label lab_norooms{"Your house has no rooms yet. Start with \"Add a new room\"."};
  Label lab_notice;  // what is wrong with a data file; hidden when nothing is

  // The devices of one room.
  Frame frm_devices{false};
  Label lab_room;
  Label lab_nodevices{"This room has no devices yet. Go to Home and choose \"Add a new device\"."};
  std::array<Picture, kSlots> device;
  std::array<Label, kSlots> devicename;
  std::array<Slider, kSlots> image1;

  Frame frm_addroom{false};
  TextBox txt_roomname;
  Button Command3{"Save"};

  Frame frm_adddevice{false};
  ComboBox lst_temproom;
  TextBox txt_devname;
  ComboBox lst_housecode;
  ComboBox lst_device;
  ComboBox lst_devicetype;
  Button Command4{"Save"};

  // The timed events and their editor.
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
  ListView ListView1;
  Label lab_noevents{
      "You have no timed events yet. Choose a device, a time and the days above, then click Save."};
  Label lab_eventnotice;  // what is wrong with the event list; hidden when nothing is

  Frame frm_macros{false};
  ComboBox com_sel1;
  ComboBox mac_event;
  ComboBox com_sel2;
  ComboBox mac_whattodo;
  Button com_savemacro{"Save"};
  ListBox ListVIew2;

  // Web server settings.
  Frame Frame4{false};
  Label Label48{"The web server is currently set to run on port"};
  Label lab_webstate;  // whether and where the server runs, whether it asks for a password
  TextBox txt_webport;
  Button Command7{"Save"};
  Button Command8{"Set Password"};
  Button Command9{"Clear Password"};
  Button Command10{"Show URL"};

  // Profiles.
  Frame Frame5{false};
  ComboBox com_profile;

  // Speech recognition reminders.
  Frame Frame3{false};

  // Location and start-up settings; part of the home page.
  Frame Frame1;
  ComboBox com_city;
  CheckBox Check1{"Daylight Saving Time"};
  Label lab_sunset;
  CheckBox chk_service{"Run as a service"};
  CheckBox chk_lww{"Start with Windows"};
  CheckBox chk_startup{"Delayed start"};

  // Never shown.
  ListBox lst_rooms{true};
  ListBox lst_codes;
  TextBox txt_queue;
  Picture imgicon;

  Menu mnuPopup{"Menu1"};
  MenuEntry mnu_deletetree{"Delete this item"};
  Menu mnuPopup1{"Menu2"};
  MenuEntry mnu_delevent{"Delete this event"};
  MenuEntry mnu_newevent{"Add New Event"};
  MenuEntry mnu_line1{"-"};
  MenuEntry mnu_runeventnow{"Run this event now"};
  Menu sspp3{"Menu3"};
  MenuEntry mnu_about{"About Homewarden"};
  MenuEntry mnu_line2{"-"};
  MenuEntry mnu_exit{"Exit"};

  Timer startuptimer{500, false};
  Timer timerqueue{2000, true};
  Timer timerdelete{10000, false};
  Timer timetimer{0, true};
  Timer eventtimer{0, true, Timer::Start::kWholeMinute};
  Timer flashsave{0, true};
  Timer timerhide{0, true};

  bool skipdelay = false;     // ends the start-up delay at its next second
  bool ignoreclicks = false;  // option boxes and the resize handler do nothing
  bool formloading = false;   // daylight saving, city and profile do nothing
  bool filebusy = false;      // an operation works on the data files, or code moves a slider
  bool sending = false;       // a device command is being sent
  bool connected = false;     // the interface has been found

  // Today's sun times; nothing until they could be computed.
  std::optional<Date> sunrise_time;
  std::optional<Date> sunset_time;

  // Keys of once-events waiting for removal; "" is a free slot.
  std::array<std::string, 51> once_removal;
};

}  // namespace homewarden
