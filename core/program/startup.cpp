#include "core/program/startup.h"

#include <string>

#include "base/text.h"
#include "core/lists/choice_lists.h"
#include "core/program/window_memory.h"
#include "core/program/window_position.h"
#include "platform/waiting.h"

namespace homewarden {

Startup::Startup(FrmMain& form, FrmWait& wait, Operations& operations, EventLoop& loop,
                 Module1& module1, Settings& settings, Steps& steps, SingleInstance& instance,
                 SingleInstance& service, Desktop& desktop, HouseStartup& house, RoomList& rooms,
                 Speech& speech, NavigationTree& tree, ProfileSwitch& profiles, EventList& events,
                 Tray& tray, InterfaceFinder& finder, ServiceMode& service_mode,
                 StartOptions& start_options)
    : steps_(steps),
      takeover_(form, wait, steps, module1, instance, service),
      form_(form),
      wait_(wait),
      operations_(operations),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      desktop_(desktop),
      house_(house),
      rooms_(rooms),
      speech_(speech),
      tree_(tree),
      profiles_(profiles),
      events_(events),
      tray_(tray),
      finder_(finder),
      service_mode_(service_mode),
      start_options_(start_options) {
  // The window that comes forward is what the person wants to see, not this copy's wait.
  takeover_.another_runs.connect([this] {
    if (tray_.show_other_copy()) wait_.visible = false;
  });
  form.startuptimer.tick.connect([this] { running_ = operations_.start(delayed_step()); });
}

void Startup::start() {
  running_ = operations_.start(Form_Load());
}

void Startup::stop() {
  operations_.end(running_);
  form_.startuptimer.set_enabled(false);
}

// The service, which is stopped on the way, must find that the house is taken.
Task<void> Startup::Form_Load() {
  form_.skipdelay = false;
  wait_.visible = true;
  mark_taken();
  form_.ignoreclicks = true;
  house_.begin_loading();

  co_await steps_.finish(house_.learn_settings());
  const bool has_house = co_await takeover_.run();
  if (!has_house) {
    loop_.quit();
    co_return;
  }
  mark_taken();  // a window or a service that has ended meanwhile left the house free
  steps_.run([this] { show_web_port(); });
  house_.mark_installed();
  form_.ignoreclicks = true;
  form_.lst_temproom.clear();

  co_await house_.load_lists();
  co_await steps_.progress("Loading MsAgent");
  steps_.run([this] { speech_.initagent(); });
  co_await steps_.progress("Loading Devices");
  steps_.run([this] { tree_.loadtree(); });
  co_await steps_.progress("Loading Options");
  house_.forget_once_events();
  rooms_.gohome();
  fill_device_lists(form_);
  fill_macro_lists(form_);
  fill_event_columns(form_);
  fill_event_lists(form_);  // the panel that was open last presets the time
  steps_.run([this] {
    place_window(form_, settings_, desktop_);
    placed_ = settings_.are_known();
    restore_view(form_, settings_);
  });
  steps_.run([this] { form_.com_profile.text = profiles_.active(); });
  steps_.run([this] { set_options(); });
  steps_.run([this] { start_options_.renew_logon(); });
  steps_.run([this] { service_mode_.install_missing(); });
  steps_.run([this] { service_mode_.tell_if_it_never_came(); });
  co_await steps_.progress("Loading Events");
  co_await steps_.finish(events_.loadevents());

  wait_.visible = false;
  house_.compute_sun_times();
  form_.startuptimer.set_enabled(true);
  house_.begin_work();
  form_.visible = true;
}

void Startup::mark_taken() {
  steps_.run([this] {
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "closeengine", "True");
  });
}

void Startup::show_web_port() {
  const std::string port =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "webport", "80");
  form_.Label48.caption = form_.Label48.caption.get() + " " + port;
  form_.txt_webport.text = port;
}

void Startup::set_options() {
  show_boxes();
  fill_dim_list(form_);
  options_set_ = settings_.are_known();
}

void Startup::show_boxes() {
  form_.chk_startup.checked = takeover_.is_delayed();
  start_options_.show_logon();
  service_mode_.show_stored();
}

Task<void> Startup::delayed_step() {
  form_.startuptimer.set_interval(0);
  tray_.loadtray();
  co_await pending_events(loop_);
  // A click of before was ignored; what it left in a box is not so.
  steps_.run([this] { show_boxes(); });
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
