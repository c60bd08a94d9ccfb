#pragma once

#include <string>

#include "platform/linux/line_output.h"
#include "ui/controls.h"

namespace homewarden {

// Prints a text of the program in the terminal's encoding; nothing for "".
void print_line(os_linux::LineOutput& output, const std::string& text);

// Prints each text that the property gets. One that is set again, or becomes "", is not printed.
// Both must outlive the loop.
void print_changes(os_linux::LineOutput& output, Property<std::string>& text);

// Prints the status line, the interface's state and its tip in this way: what a person without a
// display sees of the program.
void print_status_lines(os_linux::LineOutput& output, StatusBar& status);

}  // namespace homewarden
