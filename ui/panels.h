#pragma once

#include "platform/clock.h"
#include "ui/frm_main.h"

namespace homewarden {

// Shows one panel of the right side and hides the others.
void show_only(FrmMain& form, Frame& frame);

// Sets the event editor to a time of day.
void preset_time(FrmMain& form, const LocalTime& now);

}  // namespace homewarden
