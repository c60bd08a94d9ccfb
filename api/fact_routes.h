#pragma once

#include "api/interface_now.h"
#include "api/macro_answers.h"
#include "api/routes.h"
#include "base/task.h"
#include "platform/clock.h"
#include "sun/location.h"
#include "ui/home_panel.h"

namespace homewarden {

// GET /macros, GET /sun, GET /interface and GET /openapi.json: what is only read.
class FactRoutes {
 public:
  FactRoutes(Routes& routes, const MacroAnswers& macros, const Location& location,
             const OptionsPanel& options, const Clock& clock, const InterfaceNow& interface,
             const JsonCodec& json);
};

}  // namespace homewarden
