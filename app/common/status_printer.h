#pragma once

#include <string>

#include "ui/frm_main.h"

namespace homewarden {

// Prints a text of the program on the terminal.
void print_line(const std::string& text);

// Prints each text of the status line, and of the interface's state, to the terminal: what a person
// without a display sees of the program.
void print_status_lines(FrmMain& form);

}  // namespace homewarden
