#include "api/automation_api.h"

#include <chrono>
#include <utility>

namespace homewarden {
namespace {

constexpr int kMinute = 60'000;  // milliseconds

}  // namespace

AutomationApi::AutomationApi(Routes& routes, ChangeLog& log, const JsonCodec& json, FrmMain& form,
                             EventLoop& loop, Module1& module1, HouseIndex& house, ListFile& macros,
                             OffEvents& off, const ProfileSwitch& profiles, ProfileChange& change,
                             const Location& location, DeviceCommands& commands,
                             const EventAnswers::DeviceId& id_of, EventRoutes::Run run)
    : events_(
          off, house, loop,
          [&location](std::chrono::local_days day) { return location.sun_times(day); }, id_of),
      macros_(macros, house, id_of),
      interface_(form.Statusbar, form, commands),
      event_routes_(routes, events_, off, std::move(run)),
      profile_routes_(routes, form, form, module1, profiles, change),
      fact_routes_(routes, macros_, location, form, loop, interface_, json),
      changes_(log, events_, macros_, off, profiles, change, interface_, location, loop, house,
               form, form, form),
      minute_(kMinute, true, Timer::Start::kWholeMinute),
      minute_driver_(loop, minute_) {
  minute_.tick.connect([this] { changes_.look(); });
}

}  // namespace homewarden
