#pragma once

#include <optional>

#include "ui/qt/look.h"

namespace homewarden::view {

// The look for who has asked the desktop for high contrast: the ground and the words are those of
// the palette, as far as they differ enough, and black and white otherwise, or where it is not as
// dark as is wished. All words and edges have the full contrast; cards have neither glow nor tint.
Look high_contrast_look(const QPalette& palette, std::optional<bool> dark);

}  // namespace homewarden::view
