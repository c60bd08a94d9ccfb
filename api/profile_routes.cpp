#include "api/profile_routes.h"

#include <algorithm>
#include <utility>

#include "api/body.h"
#include "automation/event_record.h"
#include "base/code_page.h"
#include "base/lines.h"

namespace homewarden {
namespace {

constexpr int kLooks = 4;  // at the files, each two seconds after the other

int events_in(std::string_view content) {
  int count = 0;
  LineReader reader(content);
  while (const auto line = reader.next())
    if (parse_event(*line)) ++count;
  return count;
}

}  // namespace

ProfileRoutes::ProfileRoutes(Routes& routes, const ProfilePanel& panel, const Flags& flags,
                             Module1& module1, const ProfileSwitch& profiles, ProfileChange& change)
    : panel_(panel), flags_(flags), module1_(module1), profiles_(profiles), change_(change) {
  routes.add("GET", "/profiles", [this](ApiCall call) { return list(std::move(call)); });
  routes.add("PUT", "/profiles/active", [this](ApiCall call) { return choose(std::move(call)); });
}

// Those that the window offers, and one that was stored by hand.
std::vector<std::string> ProfileRoutes::names() const {
  std::vector<std::string> names = panel_.com_profile.items;
  const std::string active = profiles_.active();
  if (std::find(names.begin(), names.end(), active) == names.end()) names.push_back(active);
  return names;
}

Json ProfileRoutes::json() const {
  const std::string active = profiles_.active();
  Json::Array profiles;
  for (const std::string& name : names())
    profiles.push_back(Json::Object{{"name", to_utf8(name)},
                                    {"active", name == active},
                                    {"events", events_in(profiles_.events_of(name).value_or(""))}});
  return Json::Object{{"active", to_utf8(active)}, {"profiles", std::move(profiles)}};
}

Task<Routes::Result> ProfileRoutes::list(ApiCall) {
  Json body = json();
  co_return Routes::Answer{200, std::move(body)};
}

Task<Routes::Result> ProfileRoutes::choose(ApiCall call) {
  const std::string wrong = wrong_member(call.body, {"name"});
  if (!wrong.empty()) co_return ApiProblem{400, wrong};
  const Json* wanted = call.body.find("name");
  if (!wanted || !wanted->text()) co_return ApiProblem{400, "\"name\" must be there, a text."};
  const auto all = names();
  const auto found = std::find_if(all.begin(), all.end(), [wanted](const std::string& name) {
    return to_utf8(name) == *wanted->text();
  });
  if (found == all.end())
    co_return ApiProblem{404, "There is no such profile. The profiles are at /profiles."};
  const std::string& name = *found;
  for (int look = 1; flags_.formloading || flags_.filebusy; ++look) {
    if (look == kLooks)
      co_return ApiProblem{503, "The files of the house are in use. Please try again."};
    co_await module1_.pause(2);
  }
  if (name != profiles_.active()) {
    const bool changed = co_await change_.change_to(name);
    if (!changed)
      co_return ApiProblem{409,
                           "The files of the profile could not be read or written, so the "
                           "profile was not changed. Please check the disk and the "
                           "permissions of the files."};
  }
  Json body = json();
  co_return Routes::Answer{200, std::move(body)};
}

}  // namespace homewarden
