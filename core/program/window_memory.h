#pragma once

#include "core/settings.h"
#include "ui/navigation_pane.h"

namespace homewarden {

// What the left side showed when the program ended last: its width, the rooms that were open, and
// the panel or room that was looked at. What is no more is passed over; without anything stored
// nothing changes. To be called when the tree is built.
void restore_view(NavigationPane& pane, Settings& settings);
void save_view(const NavigationPane& pane, Settings& settings);

}  // namespace homewarden
