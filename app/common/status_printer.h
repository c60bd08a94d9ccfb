#pragma once

#include <string>

#include "ui/controls.h"

namespace homewarden {

// Prints a text of the program on the terminal, in the terminal's encoding; nothing for "".
void print_line(const std::string& text);

// Prints each text of the status line, of the interface's state and of its tip to the terminal:
// what a person without a display sees of the program. A text that is set again, or becomes "", is
// not printed.
void print_status_lines(StatusBar& status);

}  // namespace homewarden
