#pragma once

#include <QFont>
#include <QStringList>

namespace homewarden::view {

// The text in lines of that width in pixels, one at least; words break where one alone is wider.
// What `most` lines do not hold ends the last one, with an ellipsis.
QStringList wrapped_lines(const QString& text, const QFont& font, int width, int most);

}  // namespace homewarden::view
