#include "ui/frm_main.h"

namespace homewarden {

FrmMain::FrmMain() : Window("Homewarden") {
  width = 14400.0F;
  height = 9600.0F;
  panels = {&frm_home,   &frm_devices, &frm_addroom, &frm_adddevice, &frm_event,
            &frm_macros, &Frame4,      &Frame5,      &Frame3};
}

}  // namespace homewarden
