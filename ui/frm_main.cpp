#include "ui/frm_main.h"

namespace homewarden {

FrmMain::FrmMain() : Window("Homewarden") {
  width = 16800.0F;
  height = 10800.0F;
  panels = {&frm_home,   &frm_devices, &frm_addroom, &frm_adddevice, &frm_event,
            &frm_macros, &Frame4,      &Frame5,      &Frame3,        &frm_settings};
}

}  // namespace homewarden
