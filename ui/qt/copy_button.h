#pragma once

#include <QPushButton>
#include <string>

#include "ui/controls.h"

namespace homewarden::view {

// Puts the text that there is when it is clicked on the clipboard, and says so for a moment.
QPushButton* make_copy(Button& control, const Property<std::string>& text, QWidget* parent);

}  // namespace homewarden::view
