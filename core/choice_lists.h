#pragma once

#include "ui/frm_main.h"

namespace homewarden {

// The lists of the editors that never change, with what is chosen in them at first.
void fill_device_lists(FrmMain& form);
void fill_event_columns(FrmMain& form);
void fill_event_lists(FrmMain& form);
void fill_dim_list(FrmMain& form);

}  // namespace homewarden
