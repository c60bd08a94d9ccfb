#include "core/program/house_parts.h"

#include <string>
#include <string_view>
#include <utility>

#include "base/code_page.h"
#include "ui/notice_faces.h"
#include "x10/interface_state.h"

namespace homewarden {
namespace {

constexpr std::size_t kNextEvents = 5;  // told with the house

// The millisecond of its start, short: a machine does not start two in one.
std::string name_of_run(const Clock& clock) {
  constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuvwxyz";
  std::string name;
  for (auto rest = clock.system_time().time_since_epoch().count(); rest > 0; rest /= 36)
    name.insert(name.begin(), kDigits[static_cast<std::size_t>(rest % 36)]);
  return name;
}

}  // namespace

HouseParts::HouseParts(const HousePlatform& platform, Operations::ErrorHandler on_error,
                       Label& progress)
    : operations(std::move(on_error)),
      settings(platform.registry),
      house(settings),
      device_ids(settings, house),
      module1(platform.loop, platform.registry, platform.services, platform.windows_folder),
      device_state(module1, platform.loop),
      state_watch(frm_main, platform.registry, device_state),
      files(platform.files, platform.folder),
      rooms(frm_main, frm_main, frm_main, frm_main, frm_main, module1, house, files.rooms, notices),
      commands(frm_main.Statusbar, frm_main, platform.loop, module1, platform.interface_control,
               device_state),
      unsent(frm_main.Statusbar, operations, platform.loop, house, device_state, commands,
             platform.dialogs, platform.registry),
      store_notices(platform.registry, notices, frm_main.Statusbar, frm_main),
      events(frm_main, frm_main, frm_main, module1, house, files.events, files.macros),
      event_memory(module1),
      once_events(frm_main, event_memory, notices),
      cleanup(frm_main, frm_main, once_events, frm_main, frm_main.Statusbar, operations,
              platform.loop, module1, files.events, events),
      location(frm_main, frm_main.Statusbar, frm_main, frm_main, operations, platform.loop,
               settings),
      scheduler(frm_main.Statusbar, notices, frm_main, frm_main, frm_main, location, event_memory,
                once_events, operations, platform.loop, module1, files.events, commands,
                [this] { frm_main.close_requested(); }),
      macros(frm_main, frm_main.Statusbar, files.macros),
      profile_switch(platform.files, settings, module1, files.events, platform.folder),
      profile_change(frm_main, frm_main, frm_main, module1, profile_switch, events, cleanup),
      off_events(platform.files, platform.folder, profile_switch, files.events, events, once_events,
                 frm_main, module1),
      seen(frm_main.Statusbar, house, platform.loop, device_state),
      queue(frm_main, frm_main, frm_main, operations, house, commands, seen),
      incoming(frm_main.Statusbar, operations, platform.loop, platform.interface_control, seen),
      clock(frm_main.Statusbar, frm_main, platform.loop, [this] { location.dosunset(); }),
      pages(frm_server, module1, settings, device_state, notices, platform.files,
            files.rooms.path(), platform.folder / "html"),
      web_server(frm_main, frm_main.Statusbar, frm_server, operations, module1, settings,
                 platform.dialogs, platform.files, notices, platform.web, platform.folder / "html"),
      tokens(frm_main, frm_main, operations, platform.loop, settings, platform.registry,
             platform.dialogs, notices, platform.web),
      requests(frm_main.Statusbar, frm_server, operations, platform.loop, module1, platform.web,
               pages,
               PageCache(platform.loop, platform.files, platform.registry, notices,
                         files.rooms.path(), platform.folder / "html"),
               house, commands, device_state),
      run(name_of_run(platform.loop)),
      routes(operations, platform.json, platform.web),
      change_log(platform.json, platform.web, run),
      remote_commands(frm_main.Statusbar, operations, platform.loop, house, device_ids,
                      device_state, commands, run),
      automation_api(
          routes, change_log, platform.json, frm_main, platform.loop, module1, house, files.macros,
          off_events, profile_switch, profile_change, location, commands,
          [this](const Device& device) { return device_ids.of(device.key()); },
          [this](const Device& device, DeviceOrder order, ApiCall call) {
            return house_api.devices().run_event(device, order, std::move(call));
          }),
      house_api(routes, change_log, house, device_ids, device_state, commands, remote_commands,
                module1, notices, platform.loop, platform.web,
                {[this] { return automation_api.interface().json(); },
                 [this]() -> Json { return to_utf8(profile_switch.active()); },
                 [this]() -> Json { return automation_api.events().next(kNextEvents); }}),
      finder(frm_main, frm_main, frm_main, frm_main, frm_main.Statusbar, frm_main, frm_main,
             operations, platform.loop, module1, platform.interface_control, platform.dialogs,
             notices),
      steps(progress, platform.loop, operations),
      startup(frm_main, frm_main, frm_main, frm_main, frm_main, steps, module1, settings,
              platform.counterpart, rooms, files, profile_switch, location, web_server),
      shutdown(frm_main, frm_main, frm_main, frm_main, steps, finder, incoming, cleanup,
               platform.loop, module1, platform.interface_control) {
  notices.tell("the folder of the house", from_utf8(platform.folder_trouble));
  const auto run_macros = [this](const std::string& house_code, int unit, int function) {
    macros.amacros(house_code, unit, function);
  };
  commands.carried_out.connect(run_macros);
  incoming.seen_on_line.connect(run_macros);
  shutdown.begins.connect([this] { remote_commands.take_no_more(); });
  // Beside it another message, that there is no interface, may have taken the place of this one.
  finder.found.connect([this] { web_server.tell_failure(); });
  show_notices(frm_main, frm_main.Statusbar, notices);
  show_interface_state(frm_main.Statusbar, platform.interface_control);
  for (Timer* timer : {&frm_main.timerqueue, &frm_main.timerdelete, &frm_main.timetimer,
                       &frm_main.eventtimer, &frm_main.statetimer})
    timers.emplace_back(platform.loop, *timer);
}

HouseParts::~HouseParts() {
  operations.destroy_all();
}

}  // namespace homewarden
