#pragma once

#include "ui/frm_main.h"

namespace homewarden {

// Prints each text of the status line, and of the interface's state, to the terminal: what a person
// without a display sees of the program.
void print_status_lines(FrmMain& form);

}  // namespace homewarden
