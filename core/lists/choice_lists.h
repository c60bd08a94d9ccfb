#pragma once

#include "ui/frm_main.h"

namespace homewarden {

// The lists of the editors that never change, with what is chosen in them at first.
void fill_device_lists(FrmMain& form);
void fill_event_columns(FrmMain& form);
void fill_event_lists(FrmMain& form);
void fill_dim_list(FrmMain& form);

// What the minute box offers: minutes, or the offsets from a sun time in hours. Its text stays when
// it is among them and becomes "00" otherwise.
void fill_minutes(FrmMain& form);
void fill_sun_offsets(FrmMain& form);

}  // namespace homewarden
