#pragma once

#include "platform/clock.h"
#include "ui/frm_main.h"

namespace homewarden {

// The lists of the editors that never change, with what is chosen in them at first.
void fill_device_lists(FrmMain& form);
void fill_event_columns(EventPanel& form);
void fill_event_lists(EventPanel& form);
void fill_dim_list(EventPanel& form);

// What the minute box offers: minutes, or the offsets from a sun time in hours. Its text stays when
// it is among them and becomes "00" otherwise.
void fill_minutes(EventPanel& form);
void fill_sun_offsets(EventPanel& form);

// Sets the event editor to a time of day.
void preset_time(EventPanel& form, const LocalTime& now);

}  // namespace homewarden
