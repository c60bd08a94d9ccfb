#pragma once

#include "ui/controls.h"

namespace homewarden {

// Home, with the links that lead on.
struct HomePanel {
  HomePanel();

  Frame frm_home{false};
  Label Label3{"Add a new room"};
  Label Label4{"Add a new device"};
  Label Label5{"Add or View timed events"};
  Label Label51{"To auto detect X10 interface, click here"};
  Label Label63{"To manually set X10 port number, click here"};
  Label lab_norooms{"Your house has no rooms yet. Start with \"Add a new room\"."};
  Label lab_notice;  // what is wrong with files and settings; hidden when nothing is
};

// Location and start-up settings; part of the home page.
struct OptionsPanel {
  OptionsPanel();

  Frame Frame1;
  ComboBox com_city;
  CheckBox Check1{"Daylight Saving Time"};
  Label lab_sunset;
  CheckBox chk_service{"Run as a service"};
  CheckBox chk_lww{"Start when I log on"};
  CheckBox chk_startup{"Delayed start"};
};

}  // namespace homewarden
