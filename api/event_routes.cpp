#include "api/event_routes.h"

#include <optional>
#include <string>
#include <utility>

#include "api/body.h"
#include "automation/event_target.h"
#include "base/code_page.h"
#include "base/text.h"

namespace homewarden {
namespace {

const char* const kNoEvent = "There is no such event. The events are at /events.";

// What carries it out when the house does not have it: its outcome is recorded under the name that
// stands in the event.
Device named_in(const EventRecord& event) {
  return {"", event.roomdevice, event.housecode, to_integer16(event.unit).value_or(0)};
}

}  // namespace

EventRoutes::EventRoutes(Routes& routes, const EventAnswers& answers, OffEvents& events, Run run)
    : answers_(answers), events_(events), run_(std::move(run)) {
  routes.add("GET", "/events", [this](ApiCall call) { return list(std::move(call)); });
  routes.add("GET", "/events/{id}", [this](ApiCall call) { return one(std::move(call)); });
  routes.add("PUT", "/events/{id}", [this](ApiCall call) { return change(std::move(call)); });
  routes.add("POST", "/events/{id}/run", [this](ApiCall call) { return run_now(std::move(call)); });
}

// Where the files cannot be read nobody knows whether it is there.
ApiProblem EventRoutes::missing(unsigned unreadable) const {
  const std::string trouble = events_.trouble();
  if (trouble.empty()) return {404, kNoEvent};
  return {unreadable, to_utf8(trouble)};
}

Task<Routes::Result> EventRoutes::list(ApiCall) {
  auto events = answers_.all();
  if (!events) co_return ApiProblem{503, to_utf8(events_.trouble())};
  Json body = Json::Object{{"events", *std::move(events)}};
  co_return Routes::Answer{200, std::move(body)};
}

Task<Routes::Result> EventRoutes::one(ApiCall call) {
  const auto entry = answers_.find(call.names[0]);
  if (!entry) co_return missing(503);
  Json body = answers_.json_of(*entry);
  co_return Routes::Answer{200, std::move(body)};
}

Task<Routes::Result> EventRoutes::change(ApiCall call) {
  const std::string wrong = wrong_member(call.body, {"enabled"});
  if (!wrong.empty()) co_return ApiProblem{400, wrong};
  const Json* enabled = call.body.find("enabled");
  if (!enabled || !enabled->boolean())
    co_return ApiProblem{400, "\"enabled\" must be there, true or false."};
  const bool on = *enabled->boolean();
  const auto entry = answers_.find(call.names[0]);
  if (!entry) co_return missing(409);
  const OffEvents::Result result = co_await events_.switch_event(entry->event.key(), on);
  switch (result.outcome) {
    case OffEvents::Outcome::kGone:
      co_return ApiProblem{404, kNoEvent};
    case OffEvents::Outcome::kBusy:
      co_return ApiProblem{503, to_utf8(result.problem)};
    case OffEvents::Outcome::kRefused:
      co_return ApiProblem{409, to_utf8(result.problem)};
    case OffEvents::Outcome::kDone:
      break;
  }
  Json body = answers_.json_of({entry->event, on});
  co_return Routes::Answer{200, std::move(body)};
}

// Also one that is off: whoever asks for it wants it now.
Task<Routes::Result> EventRoutes::run_now(ApiCall call) {
  const auto entry = answers_.find(call.names[0]);
  if (!entry) co_return missing(503);
  const EventRecord& event = entry->event;
  const Device* known = answers_.device_of(event);
  const Device device = known ? *known : named_in(event);
  const auto order = order_of(event);
  if (!order) co_return ApiProblem{422, "This event has no level or action that could be sent."};
  if (!device.has_address())
    co_return ApiProblem{422, "The power line has no such address: " + to_utf8(device.house_code) +
                                  std::to_string(device.unit) + "."};
  Routes::Result result = co_await run_(device, *order, std::move(call));
  co_return result;
}

}  // namespace homewarden
