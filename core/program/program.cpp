#include "core/program/program.h"

#include <utility>

#include "core/house/settings_page.h"
#include "core/house/status_subject.h"
#include "x10/interface_state.h"

namespace homewarden {
namespace {

Platform with_dialogs(const Platform& of, Dialogs& dialogs) {
  const HousePlatform house{of.loop,
                            of.files,
                            of.registry,
                            of.services,
                            of.instance,
                            of.counterpart,
                            of.interface_control,
                            dialogs,
                            of.web,
                            of.json,
                            of.folder,
                            of.windows_folder,
                            of.folder_trouble};
  return {house, of.window_call, of.desktop, of.sounds, of.installer, of.logon_entry, of.speech};
}

}  // namespace

Program::Program(const Platform& outside, Operations::ErrorHandler on_error)
    : messages_(outside.loop),
      dialogs_(outside.dialogs, messages_),
      platform_(with_dialogs(outside, dialogs_)),
      house_(platform_, std::move(on_error), frm_wait.Label1),
      presses_(house_.operations, house_.house, house_.device_state, house_.commands),
      devices_(frm_main, frm_main, house_.operations, house_.house, house_.device_state,
               house_.commands, presses_, platform_.dialogs, platform_.sounds, platform_.folder),
      speech_(frm_main, frm_main, {&frm_main.frm_macros, &frm_main.Frame4}, frm_main, frm_main,
              frm_main.Statusbar, house_.operations, house_.house, house_.settings,
              house_.device_state, house_.commands, platform_.speech),
      tree_(frm_main, house_.operations, platform_.loop, house_.rooms, house_.house, devices_,
            speech_),
      tree_levels_(frm_main.Tree, tree_, house_.device_state),
      interface_overview_(frm_main, frm_main, frm_main.Statusbar, frm_main, house_.module1,
                          house_.notices),
      home_overview_(frm_main, frm_main, frm_main, frm_main.Tree, frm_main, house_.operations,
                     platform_.loop, house_.house, house_.device_state, house_.commands, presses_,
                     devices_, platform_.folder),
      home_times_(frm_main, frm_main, frm_main, frm_main, house_.operations, platform_.loop,
                  house_.house, house_.location),
      first_run_(frm_main, frm_main, frm_main, frm_main, frm_main, frm_main, frm_main.Tree,
                 frm_main.Statusbar, house_.operations, platform_.loop, house_.house,
                 house_.notices, house_.device_state, house_.commands, presses_, devices_,
                 platform_.desktop),
      editor_(frm_main, frm_main.Tree, frm_main.Statusbar, frm_main, frm_main, house_.operations,
              platform_.loop, house_.module1, platform_.dialogs, house_.files.events,
              house_.events),
      event_deletion_(frm_main, frm_main, house_.operations, house_.module1, platform_.dialogs,
                      house_.house, house_.files.events, house_.events),
      run_event_now_(frm_main, house_.operations, platform_.dialogs, house_.events,
                     house_.commands),
      event_outlook_(
          frm_main, house_.house, platform_.loop,
          [this](std::chrono::local_days day) { return house_.location.sun_times(day); },
          [this] { return house_.profile_switch.active(); }),
      macro_editor_(frm_main, frm_main, house_.operations, platform_.loop, house_.module1,
                    platform_.dialogs, house_.files.macros, house_.events),
      macro_outlook_(frm_main, house_.house),
      profiles_(frm_main, frm_main, frm_main, frm_main, house_.operations, platform_.loop,
                platform_.dialogs, house_.profile_switch, house_.profile_change),
      anything_(frm_main, frm_main, frm_main, house_.operations, platform_.loop, house_.house,
                house_.device_state, devices_, house_.location, platform_.folder),
      profile_preview_(
          frm_main, frm_main, house_.house, platform_.loop, house_.profile_switch,
          [this](std::chrono::local_days day) { return house_.location.sun_times(day); }),
      house_editor_(frm_main, frm_main, frm_main, frm_main, house_.operations, house_.module1,
                    house_.settings, platform_.dialogs, house_.files.rooms, house_.rooms,
                    house_.events, tree_),
      deletion_undo_(frm_main, frm_main, frm_main.Statusbar, house_.operations, house_.module1,
                     house_.settings, house_.files, house_.house, house_.rooms, house_.events,
                     house_.profile_switch, house_.device_state, tree_, messages_),
      house_deletion_(frm_main, frm_main, frm_main, frm_main, frm_main.Statusbar, house_.operations,
                      platform_.loop, house_.module1, house_.settings, platform_.dialogs,
                      house_.files, house_.house, house_.rooms, house_.events, house_.device_state,
                      tree_, deletion_undo_),
      house_changes_(frm_main, frm_main, frm_main.Statusbar, messages_, house_.module1,
                     house_.settings, house_.files, house_.house, house_.rooms, house_.events,
                     house_.once_events, house_.device_state, presses_, devices_, tree_),
      room_editing_(frm_main, frm_main, frm_main, frm_main, frm_main, house_.operations,
                    house_.settings, house_.house, house_.rooms, devices_, tree_, house_editor_,
                    house_changes_, house_deletion_, messages_),
      window_(frm_main, frm_main, frm_main, frm_main, house_.operations, platform_.desktop,
              platform_.dialogs),
      tray_(frm_main, frm_main, frm_main.imgicon, frmSysTray, house_.settings, window_,
            platform_.window_call),
      service_call_(house_.module1, platform_.loop),
      service_mode_(frm_main, frm_main.Statusbar, frm_main, house_.operations, house_.module1,
                    house_.settings, platform_.dialogs, platform_.installer, service_call_,
                    house_.notices),
      start_options_(frm_main, frm_main.Statusbar, frm_main, house_.operations, platform_.loop,
                     house_.module1, house_.settings, platform_.dialogs, platform_.logon_entry,
                     house_.notices),
      startup_(frm_main, frm_wait, house_.operations, platform_.loop, house_.module1,
               house_.settings, house_.steps, platform_.instance, platform_.counterpart,
               platform_.desktop, house_.startup, house_.rooms, speech_, tree_,
               house_.profile_switch, house_.events, tray_, house_.finder, service_mode_,
               start_options_),
      shutdown_(frm_main, frm_main, frm_main.Statusbar, frm_main, frm_main, frm_wait, house_.steps,
                startup_, service_mode_, service_call_, house_.shutdown, house_.web_server, tray_,
                house_.operations, platform_.loop, house_.module1, house_.settings,
                platform_.desktop),
      message_list_(frm_main, frm_main, messages_) {
  tell_failed_commands(house_.commands, house_.house, messages_);
  note_events(frm_main, house_.events, house_.profile_switch, messages_);
  show_line_state(frm_main.Statusbar, frm_main);
  anything_.offer("Settings", "options location place city start sunrise sunset",
                  [this] { frm_main.cmd_settings.click(); });
  anything_.offer("Voice", "speech listen microphone", [this] {
    frm_main.Tree.selected = nullptr;
    frm_main.show_only(frm_main.Frame3);
  });
  // The first room and device have a page of their own.
  const auto is_begun = [this] { return !frm_main.is_first_run; };
  anything_.offer(
      "Add a new room", "create", [this] { frm_main.Label3.click(); }, is_begun);
  anything_.offer(
      "Add a new device", "create module", [this] { frm_main.Label4.click(); }, is_begun);
  anything_.offer(
      "Add a new event", "create timer schedule",
      [this] {
        frm_main.Tree.selected = frm_main.Tree.find("Events");
        frm_main.Command5.click();
      },
      is_begun);
  show_status_subject(frm_main.Statusbar, house_.house);
  join_settings_page(frm_main, frm_main, frm_main.Tree, frm_main.Statusbar, house_.notices,
                     platform_.desktop, platform_.folder);
  house_.scheduler.minute_begins.connect(
      [this] { house_.steps.run([this] { service_mode_.first_run(); }); });
  frm_main.lab_sunset.caption.changed.connect([this] { event_outlook_.refresh(); });
  for (Timer* timer : {&frm_main.startuptimer, &frm_main.flashsave, &frm_main.eventclock,
                       &frm_main.profileclock, &frm_main.timerhide, &frm_main.timermessage})
    timers_.emplace_back(platform_.loop, *timer);
}

Program::~Program() {
  end();
}

void Program::start() {
  house_.store_notices.look();
  startup_.start();
}

void Program::end() {
  house_.operations.destroy_all();
}

}  // namespace homewarden
