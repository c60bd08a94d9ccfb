#include "api/fact_routes.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "api/openapi.h"
#include "api/sun_now.h"

namespace homewarden {
namespace {

using Fact = std::function<Routes::Result()>;

// Answers at once. A copy of the function lives as long as the answer.
Task<Routes::Result> answer(Fact fact) {
  Routes::Result result = fact();
  co_return result;
}

void add(Routes& routes, const char* path, Fact fact) {
  routes.add("GET", path, [fact = std::move(fact)](const ApiCall&) { return answer(fact); });
}

}  // namespace

FactRoutes::FactRoutes(Routes& routes, const MacroAnswers& macros, const Location& location,
                       const OptionsPanel& options, const Clock& clock,
                       const InterfaceNow& interface, const JsonCodec& json) {
  add(routes, "/macros", [&macros]() -> Routes::Result {
    auto all = macros.all();
    if (!all)
      return ApiProblem{503,
                        "The macro list cannot be read now. Please check macs.hlk and its "
                        "permissions."};
    return Routes::Answer{200, Json::Object{{"macros", *std::move(all)}}};
  });
  add(routes, "/sun", [&location, &options, &clock]() -> Routes::Result {
    return Routes::Answer{200, sun_now(location, options, clock)};
  });
  add(routes, "/interface", [&interface]() -> Routes::Result {
    return Routes::Answer{200, interface.json()};
  });
  add(routes, "/openapi.json", [description = json.read(openapi_text())]() -> Routes::Result {
    return Routes::Answer{200, description.value_or(Json())};
  });
}

}  // namespace homewarden
