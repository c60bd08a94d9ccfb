#pragma once

#include <functional>

#include "api/change_log.h"
#include "api/device_view.h"
#include "api/routes.h"
#include "core/notices.h"
#include "platform/clock.h"
#include "platform/web_server_control.h"

namespace homewarden {

// What others know of the house, to be told with it.
struct HouseFacts {
  std::function<Json()> interface_now;
  std::function<Json()> profile;
  std::function<Json()> next_events;
};

// The whole house, and its stream of changes: /, /house, /stream.
class HouseRoutes {
 public:
  HouseRoutes(Routes& routes, ChangeLog& log, const DeviceView& view, const Notices& notices,
              const Clock& clock, WebServerControl& web, HouseFacts facts);

 private:
  Task<Routes::Result> index(ApiCall call);
  Task<Routes::Result> house(ApiCall call);
  Task<Routes::Result> stream(ApiCall call);

  ChangeLog& log_;
  const DeviceView& view_;
  const Notices& notices_;
  const Clock& clock_;
  WebServerControl& web_;
  const HouseFacts facts_;
};

// The notices as programs are told of them: {"notices": [...]}.
Json json_of(const Notices& notices);

}  // namespace homewarden
