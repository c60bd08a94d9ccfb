#pragma once

#include "ui/home_panel.h"
#include "ui/interface_panel.h"
#include "ui/qt/box.h"

namespace homewarden::view {

// The next events, and the link to all of them.
QWidget* make_coming_box(HomePanel& home, QWidget* parent);

// How the interface is, what to do about it, and the links that look for it.
QWidget* make_interface_box(InterfacePanel& panel, HomePanel& home, QWidget* parent);

// What is wrong with files and settings. Hidden when nothing is.
QWidget* make_notice_box(Label& notice, QWidget* parent);

// The light of a condition.
void follow_condition(InterfacePanel& panel, Dot* dot);

// The command that gives permission, with a button that copies it. Hidden when there is none.
QWidget* make_command_field(InterfacePanel& panel, QWidget* parent);

}  // namespace homewarden::view
