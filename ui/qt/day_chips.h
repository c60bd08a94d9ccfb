#pragma once

#include <QWidget>
#include <array>

#include "ui/controls.h"

namespace homewarden::view {

// The days of a week as round boxes to check, Monday first. They stand in one row, or in two where
// they do not fit.
QWidget* make_day_chips(std::array<CheckBox, 7>& days, QWidget* parent);

// Checks all of them, Monday to Friday, or Saturday and Sunday.
QWidget* make_day_presets(std::array<CheckBox, 7>& days, QWidget* parent);

}  // namespace homewarden::view
