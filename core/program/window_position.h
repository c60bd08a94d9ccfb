#pragma once

#include "platform/desktop.h"
#include "ui/frm_main.h"

namespace homewarden {

// A window that lies right of or below the screen is put 100 twips from that edge's beginning; one
// that lies left of or above it stays.
inline void keep_on_screen(FrmMain& form, const Desktop& desktop) {
  if (form.left > desktop.screen_width()) form.left = 100.0F;
  if (form.top > desktop.screen_height()) form.top = 100.0F;
}

}  // namespace homewarden
