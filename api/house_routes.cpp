#include "api/house_routes.h"

#include <utility>

#include "base/code_page.h"
#include "base/lines.h"
#include "core/time_text.h"
#include "core/version.h"

namespace homewarden {
namespace {

Json::Array lines_of(const Notices& notices) {
  const std::string text = notices.text();
  Json::Array lines;
  LineReader reader(text);
  while (const auto line = reader.next()) lines.push_back(to_utf8(*line));
  return lines;
}

}  // namespace

Json json_of(const Notices& notices) {
  return Json::Object{{"notices", lines_of(notices)}};
}

HouseRoutes::HouseRoutes(Routes& routes, ChangeLog& log, const DeviceView& view,
                         const Notices& notices, const Clock& clock, WebServerControl& web,
                         HouseFacts facts)
    : log_(log),
      view_(view),
      notices_(notices),
      clock_(clock),
      web_(web),
      facts_(std::move(facts)) {
  routes.add("GET", "", [this](ApiCall call) { return index(std::move(call)); });
  routes.add("GET", "/house", [this](ApiCall call) { return house(std::move(call)); });
  routes.add("GET", "/stream", [this](ApiCall call) { return stream(std::move(call)); });
}

Task<Routes::Result> HouseRoutes::index(ApiCall) {
  const std::string root(kApiRoot);
  Json body = Json::Object{{"name", "Homewarden"},
                           {"version", kVersion},
                           {"api", "1"},
                           {"description", root + "/openapi.json"},
                           {"house", root + "/house"},
                           {"stream", root + "/stream"}};
  co_return Routes::Answer{200, std::move(body)};
}

// Nothing waits while it is put together: it is the house behind the event that it names.
Task<Routes::Result> HouseRoutes::house(ApiCall call) {
  Json body = Json::Object{{"event_id", log_.last_id()},
                           {"version", kVersion},
                           {"time", iso_text(clock_.system_time())},
                           {"local_time", iso_text(clock_.local_time())},
                           {"access", call.request.may_change ? "full" : "read"},
                           {"rooms", view_.rooms()},
                           {"interface", facts_.interface_now()},
                           {"notices", lines_of(notices_)},
                           {"profile", facts_.profile()},
                           {"next_events", facts_.next_events()}};
  co_return Routes::Answer{200, std::move(body)};
}

Task<Routes::Result> HouseRoutes::stream(ApiCall call) {
  web_.SendStream(call.id, log_.reader(call.request.last_event_id));
  co_return std::monostate();
}

}  // namespace homewarden
