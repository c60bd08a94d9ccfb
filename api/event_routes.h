#pragma once

#include <functional>

#include "api/event_answers.h"
#include "api/routes.h"
#include "automation/off_events.h"
#include "base/task.h"
#include "x10/device_state.h"

namespace homewarden {

// GET /events, GET /events/{id}, PUT /events/{id}, POST /events/{id}/run.
class EventRoutes {
 public:
  // Has the order of an event carried out as the commands of programs are, and answers as they do.
  // The device need not be of the house.
  using Run = std::function<Task<Routes::Result>(Device, DeviceOrder, ApiCall)>;

  EventRoutes(Routes& routes, const EventAnswers& answers, OffEvents& events, Run run);

 private:
  Task<Routes::Result> list(ApiCall call);
  ApiProblem missing(unsigned unreadable) const;
  Task<Routes::Result> one(ApiCall call);
  Task<Routes::Result> change(ApiCall call);
  Task<Routes::Result> run_now(ApiCall call);

  const EventAnswers& answers_;
  OffEvents& events_;
  Run run_;
};

}  // namespace homewarden
