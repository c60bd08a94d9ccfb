#pragma once

#include <QWidget>

#include "ui/event_panel.h"
#include "ui/frm_main.h"
#include "ui/home_panel.h"
#include "ui/house_panel.h"
#include "ui/macro_panel.h"
#include "ui/settings_panels.h"

namespace homewarden::view {

// The panels of the main window, each built and laid out by one function.
QWidget* make_home_page(FrmMain& form);
QWidget* make_options_page(OptionsPanel& options, InterfacePanel& interface, HomePanel& home,
                           SpeechPanel& speech);
QWidget* make_device_page(HousePanel& panel);
QWidget* make_add_room_page(AddRoomPanel& panel);
QWidget* make_add_device_page(AddDevicePanel& panel);
QWidget* make_event_page(EventPanel& panel);
QWidget* make_macro_page(MacroPanel& panel);
QWidget* make_web_page(WebPanel& panel);
QWidget* make_profiles_page(ProfilePanel& panel);
QWidget* make_speech_page(SpeechPanel& panel);

}  // namespace homewarden::view
