#pragma once

#include <QWidget>

#include "ui/frm_main.h"

namespace homewarden {

// The panels of the main window, each built and laid out by one function.
QWidget* make_home_page(FrmMain& form);
QWidget* make_device_page(FrmMain& form);
QWidget* make_add_room_page(FrmMain& form);
QWidget* make_add_device_page(FrmMain& form);
QWidget* make_event_page(FrmMain& form);
QWidget* make_macro_page(FrmMain& form);
QWidget* make_web_page(FrmMain& form);
QWidget* make_profiles_page(FrmMain& form);
QWidget* make_speech_page(FrmMain& form);

}  // namespace homewarden
