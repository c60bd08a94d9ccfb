#include "core/program/program.h"

#include <string>
#include <utility>

#include "ui/notice_faces.h"
#include "x10/interface_state.h"

namespace homewarden {

Program::Program(const Platform& platform, Operations::ErrorHandler on_error)
    : operations_(std::move(on_error)),
      settings_(platform.registry),
      house_(settings_),
      module1_(platform.loop, platform.registry, platform.services, platform.windows_folder),
      device_state_(module1_),
      files_(platform.files, platform.folder),
      rooms_(frm_main, frm_main, frm_main, frm_main, frm_main, module1_, house_, files_.rooms,
             notices_),
      commands_(frm_main.Statusbar, frm_main, platform.loop, module1_, platform.interface_control,
                device_state_),
      unsent_(frm_main.Statusbar, operations_, platform.loop, house_, device_state_, commands_,
              platform.dialogs, platform.registry),
      presses_(operations_, house_, device_state_, commands_),
      devices_(frm_main, frm_main, operations_, house_, device_state_, commands_, presses_,
               platform.dialogs, platform.sounds, platform.folder),
      state_watch_(frm_main, platform.registry, devices_),
      store_notices_(platform.registry, notices_, frm_main.Statusbar, frm_main),
      tree_(frm_main, operations_, platform.loop, rooms_, house_, devices_),
      events_(frm_main, frm_main, frm_main, module1_, house_, files_.events, files_.macros),
      editor_(frm_main, frm_main.Tree, frm_main.Statusbar, frm_main, frm_main, operations_,
              platform.loop, module1_, platform.dialogs, files_.events, events_),
      event_deletion_(frm_main, frm_main, operations_, module1_, platform.dialogs, house_,
                      files_.events, events_),
      event_memory_(module1_),
      once_events_(frm_main, event_memory_, notices_),
      cleanup_(frm_main, frm_main, once_events_, frm_main, frm_main.Statusbar, operations_,
               platform.loop, module1_, files_.events, events_),
      run_event_now_(frm_main, operations_, platform.dialogs, events_, commands_),
      scheduler_(frm_main.Statusbar, notices_, frm_main, frm_main, frm_main, location_,
                 event_memory_, once_events_, operations_, platform.loop, module1_, files_.events,
                 commands_, [this] { frm_main.close_requested(); }),
      macros_(frm_main, frm_main.Statusbar, files_.macros),
      macro_editor_(frm_main, frm_main, operations_, platform.loop, module1_, platform.dialogs,
                    files_.macros, events_),
      profile_switch_(platform.files, settings_, module1_, files_.events, platform.folder),
      profiles_(frm_main, frm_main, frm_main, frm_main, frm_main, operations_, platform.loop,
                module1_, platform.dialogs, profile_switch_, events_, cleanup_),
      seen_(frm_main.Statusbar, house_, platform.loop, device_state_),
      queue_(frm_main, frm_main, frm_main, operations_, house_, commands_, seen_),
      incoming_(frm_main.Statusbar, operations_, platform.loop, platform.interface_control, seen_),
      house_editor_(frm_main, frm_main, frm_main, frm_main, operations_, module1_, settings_,
                    platform.dialogs, files_.rooms, rooms_, events_, tree_),
      house_deletion_(frm_main, frm_main, frm_main, frm_main, frm_main.Statusbar, operations_,
                      platform.loop, module1_, settings_, platform.dialogs, files_, house_, rooms_,
                      events_, device_state_, tree_),
      location_(frm_main, frm_main.Statusbar, frm_main, frm_main, operations_, platform.loop,
                settings_),
      clock_(frm_main.Statusbar, frm_main, platform.loop, [this] { location_.dosunset(); }),
      window_(frm_main, frm_main, frm_main, operations_, platform.desktop, platform.dialogs),
      pages_(frm_server, module1_, settings_, device_state_, notices_, platform.files,
             files_.rooms.path(), platform.folder / "html"),
      web_server_(frm_main, frm_main.Statusbar, frm_server, operations_, module1_, settings_,
                  platform.dialogs, platform.files, platform.web, window_,
                  platform.folder / "html"),
      requests_(frm_main.Statusbar, frm_server, operations_, platform.loop, module1_, platform.web,
                pages_,
                PageCache(platform.loop, platform.files, platform.registry, notices_,
                          files_.rooms.path(), platform.folder / "html"),
                house_, commands_, device_state_),
      tray_(frm_main, frm_main, frm_main.imgicon, frmSysTray, settings_, window_,
            platform.window_call),
      finder_(frm_main, frm_main, frm_main.Statusbar, frm_main, frm_main, operations_,
              platform.loop, module1_, platform.interface_control, platform.dialogs, notices_),
      startup_(frm_main, frm_wait, operations_, platform.loop, module1_, settings_,
               platform.instance, platform.counterpart, platform.desktop, rooms_, tree_, files_,
               profile_switch_, events_, location_, tray_, finder_, web_server_),
      shutdown_(frm_main, frm_main.Statusbar, frm_main, frm_main, frm_main, frm_wait, startup_,
                finder_, cleanup_, web_server_, tray_, operations_, platform.loop, module1_,
                settings_, platform.desktop, platform.interface_control) {
  const auto run_macros = [this](const std::string& house, int unit, int function) {
    macros_.amacros(house, unit, function);
  };
  commands_.carried_out.connect(run_macros);
  incoming_.seen_on_line.connect(run_macros);
  show_notices(frm_main, frm_main.Statusbar, notices_);
  show_interface_state(frm_main.Statusbar, platform.interface_control);
  for (Timer* timer :
       {&frm_main.startuptimer, &frm_main.timerqueue, &frm_main.timerdelete, &frm_main.timetimer,
        &frm_main.eventtimer, &frm_main.flashsave, &frm_main.timerhide, &frm_main.statetimer})
    timers_.emplace_back(platform.loop, *timer);
}

Program::~Program() {
  end();
}

void Program::start() {
  store_notices_.look();
  startup_.start();
}

void Program::end() {
  operations_.destroy_all();
}

}  // namespace homewarden
