#pragma once

#include "base/json.h"
#include "platform/clock.h"
#include "sun/location.h"
#include "ui/home_panel.h"

namespace homewarden {

// What a program is told of the sun: its times today, null before a city was chosen.
Json sun_now(const Location& location, const OptionsPanel& panel, const Clock& clock);

}  // namespace homewarden
