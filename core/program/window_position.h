#pragma once

#include "core/settings.h"
#include "platform/desktop.h"
#include "ui/controls.h"

namespace homewarden {

// A window that lies right of or below the screen is put 100 twips from that edge's beginning; one
// that lies left of or above it stays. One that is larger than the screen is made as large as the
// screen, less 600 twips of its height for the frame around it, and begins at its edge.
void keep_on_screen(Window& window, const Desktop& desktop);

// Where the window was and how large when the program ended last, kept on the screen. The size
// stays what it is when none is stored.
void place_window(Window& window, Settings& settings, const Desktop& desktop);
// What cannot be stored is lost without a word.
void save_place(const Window& window, Settings& settings);

}  // namespace homewarden
