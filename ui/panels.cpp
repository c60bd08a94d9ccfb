#include "ui/panels.h"

#include "base/text.h"

namespace homewarden {

void show_only(FrmMain& form, Frame& frame) {
  frame.visible = true;
  for (Frame* other :
       {&form.frm_addroom, &form.frm_home, &form.frm_adddevice, &form.frm_event, &form.Frame3,
        &form.Frame5, &form.Frame4, &form.frm_macros, &form.frm_devices})
    if (other != &frame) other->visible = false;
}

void preset_time(FrmMain& form, const LocalTime& now) {
  form.lst_hour.text = two_digits(now.hour);
  form.lst_min.text = two_digits(now.minute);
}

}  // namespace homewarden
