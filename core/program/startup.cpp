#include "core/program/startup.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/text.h"
#include "core/lists/choice_lists.h"
#include "core/program/window_position.h"
#include "platform/waiting.h"

namespace homewarden {

Startup::Startup(FrmMain& form, FrmWait& wait, Operations& operations, EventLoop& loop,
                 Module1& module1, Settings& settings, SingleInstance& instance,
                 SingleInstance& service, Desktop& desktop, RoomList& rooms, NavigationTree& tree,
                 HouseFiles& files, ProfileSwitch& profiles, EventList& events, Location& location,
                 Tray& tray, InterfaceFinder& finder, WebServer& web_server)
    : steps_(wait, loop, operations),
      takeover_(form, wait, steps_, module1, instance),
      form_(form),
      wait_(wait),
      operations_(operations),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      service_(service),
      desktop_(desktop),
      rooms_(rooms),
      tree_(tree),
      files_(files),
      profiles_(profiles),
      events_(events),
      location_(location),
      tray_(tray),
      finder_(finder),
      web_server_(web_server) {
  // The window that comes forward is what the person wants to see, not this copy's wait.
  takeover_.another_runs.connect([this] {
    if (tray_.show_other_copy()) wait_.visible = false;
  });
  form.startuptimer.tick.connect([this] { running_ = operations_.start(delayed_step()); });
  finder.found.connect([this] { web_server_.tell_failure(); });
}

void Startup::start() {
  running_ = operations_.start(Form_Load());
}

void Startup::stop() {
  operations_.end(running_);
  form_.startuptimer.set_enabled(false);
}

Task<void> Startup::Form_Load() {
  form_.skipdelay = false;
  wait_.visible = true;
  steps_.run([this] {
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "closeengine", "True");
  });
  form_.ignoreclicks = true;
  form_.formloading = true;
  form_.txt_queue.text = std::string();
  form_.sending = false;

  co_await steps_.finish(learn_settings());
  const bool has_house = co_await takeover_.run();
  if (!has_house) {
    loop_.quit();
    co_return;
  }
  steps_.run([this] { show_web_port(); });
  steps_.run([this] {
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "installing", "False");
  });
  form_.ignoreclicks = true;
  form_.lst_temproom.clear();

  co_await steps_.progress("Loading Lists");
  steps_.run([this] { recover_files(); });
  co_await steps_.finish(rooms_.loadlists());
  co_await steps_.progress("Loading Devices");
  steps_.run([this] { tree_.loadtree(); });
  co_await steps_.progress("Loading Options");
  std::fill_n(form_.once_removal.begin(), FrmMain::kOnceSlots, std::string());
  rooms_.gohome();
  fill_device_lists(form_);
  fill_macro_lists(form_);
  steps_.run([this] {
    place_window(form_, settings_, desktop_);
    placed_ = settings_.are_known();
  });
  steps_.run([this] { form_.com_profile.text = profiles_.active(); });
  fill_event_columns(form_);
  fill_event_lists(form_);
  steps_.run([this] { set_options(); });
  co_await steps_.progress("Loading Events");
  co_await steps_.finish(events_.loadevents());

  wait_.visible = false;
  steps_.run([this] { form_.Check1.checked = settings_.read("data", "dst", "0") != "0"; });
  steps_.run([this] { location_.dosunset(); });
  form_.startuptimer.set_enabled(true);
  steps_.run([this] { web_server_.startserver(); });
  form_.timerdelete.set_enabled(true);
  form_.formloading = false;
  form_.visible = true;
}

// What is not known yet would be taken for its default, and some defaults be written over it. Then
// the service, which is stopped next, must find that the house is taken.
Task<void> Startup::learn_settings() {
  for (const RegistryRoot root : {RegistryRoot::kLocalMachine, RegistryRoot::kCurrentUser}) {
    if (module1_.is_known(root)) continue;
    co_await steps_.progress("Waiting for the settings");
    co_await module1_.known(root);
  }
  co_await module1_.stored(RegistryRoot::kLocalMachine);
}

// The profile first: it knows whether a missing event list is meant to be missing. A service that
// would not stop may be in the middle of what looks unfinished.
void Startup::recover_files() {
  if (service_.another_is_running()) return;
  profiles_.recover();
  files_.recover();
}

void Startup::show_web_port() {
  const std::string port =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "webport", "80");
  form_.Label48.caption = form_.Label48.caption.get() + " " + port;
  form_.txt_webport.text = port;
}

void Startup::set_options() {
  form_.chk_startup.checked = takeover_.is_delayed();
  fill_dim_list(form_);
  form_.chk_lww.checked = leading_number(settings_.read("data", "lww", "1")) != 0;
  form_.chk_service.checked = leading_number(settings_.read("data", "service", "0")) != 0;
  options_set_ = true;
}

Task<void> Startup::delayed_step() {
  form_.startuptimer.set_interval(0);
  tray_.loadtray();
  co_await pending_events(loop_);
  form_.ignoreclicks = false;
  restore_window_state();
  finder_.findinterface();
}

void Startup::restore_window_state() {
  if (settings_.read("data", "state", "0") == "1") form_.state = WindowState::kMinimized;
  if (form_.state != WindowState::kMinimized || !tray_.can_hide()) return;
  form_.ignoreclicks = true;
  form_.state = WindowState::kNormal;
  form_.visible = false;
  form_.ignoreclicks = false;
}

}  // namespace homewarden
