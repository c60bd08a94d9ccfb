#pragma once

#include <QFont>

namespace homewarden::view {

// The font at a factor of its size, which may be given in points or in pixels.
QFont scaled_font(QFont font, double factor, bool bold = false);

// The same of the desktop's font.
QFont scaled_font(double factor, bool bold = false);

}  // namespace homewarden::view
