#pragma once

#include "platform/clock.h"
#include "ui/event_panel.h"
#include "ui/house_panel.h"
#include "ui/macro_panel.h"

namespace homewarden {

// The lists of the editors that never change, with what is chosen in them at first: house codes,
// units and types of a new device; a macro's triggers and actions; the columns of the event list;
// actions, frequencies, hours and minutes of an event; its dim levels from 10% to 100%.
void fill_device_lists(AddDevicePanel& panel);
void fill_macro_lists(MacroPanel& panel);
void fill_event_columns(EventPanel& panel);
void fill_event_lists(EventPanel& panel);
void fill_dim_list(EventPanel& panel);

// What the minute box offers: minutes, or the offsets from a sun time in hours. Its text stays when
// it is among them and becomes "00" otherwise.
void fill_minutes(EventPanel& panel);
void fill_sun_offsets(EventPanel& panel);

// Sets the event editor to a time of day; the seconds do not count. The other boxes stay.
void preset_time(EventPanel& panel, const LocalTime& now);

}  // namespace homewarden
