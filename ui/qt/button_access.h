#pragma once

namespace homewarden::view {

// Lets screen readers press buttons that stay down, as day chips and segments do: the toolkit's own
// way turns them without a click, so that what follows a click would not happen. To be called once,
// before the first button is shown.
void make_buttons_accessible();

}  // namespace homewarden::view
