#include "core/program/startup.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/text.h"
#include "core/lists/choice_lists.h"
#include "core/program/window_position.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr int kStopTries = 3;
constexpr int kDelaySeconds = 20;

}  // namespace

Startup::Startup(FrmMain& form, FrmWait& wait, Operations& operations, EventLoop& loop,
                 Module1& module1, Settings& settings, SingleInstance& instance, Desktop& desktop,
                 RoomList& rooms, NavigationTree& tree, HouseFiles& files, ProfileSwitch& profiles,
                 EventList& events, Location& location, Tray& tray, InterfaceFinder& finder,
                 WebServer& web_server)
    : steps_(wait, loop, operations),
      form_(form),
      wait_(wait),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      instance_(instance),
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
  wait.lab_wait.tool_tip = "Click Here To Skip The Delay";
  wait.lab_wait.click.connect([this] { SkipWait(); });
  form.startuptimer.tick.connect([this, &operations] { operations.start(delayed_step()); });
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

  co_await steps_.finish(stop_service());
  const bool second_copy = co_await is_second_copy();
  if (second_copy) {
    loop_.quit();
    co_return;
  }
  co_await steps_.finish(delay());
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
  steps_.run([this] { place_window(); });
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

void Startup::SkipWait() {
  form_.skipdelay = true;
}

// Takes the house over from the background service.
Task<void> Startup::stop_service() {
  const std::string status = to_lower(module1_.servicestatus("", kServiceName));
  if (status.empty() || status == "stopped") co_return;
  for (int tries = 0; tries < kStopTries; ++tries) {
    if (tries > 0 && to_lower(module1_.servicestatus("", kServiceName)) == "stopped") co_return;
    module1_.servicestop("", kServiceName);
    if (tries == 0) co_await steps_.progress("Stopping Service");
    co_await module1_.pause(3);
  }
}

Task<bool> Startup::is_second_copy() {
  if (!instance_.another_is_running()) co_return false;
  co_await module1_.pause(5);
  co_return instance_.another_is_running();
}

Task<void> Startup::delay() {
  if (!is_delayed()) co_return;
  wait_.lab_wait.visible = true;
  for (int seconds = kDelaySeconds; seconds >= 0 && !form_.skipdelay; --seconds) {
    const std::string text = "Time Delay " + std::to_string(seconds);
    co_await steps_.progress(text);
    co_await module1_.pause(1);
  }
  wait_.lab_wait.visible = false;
}

bool Startup::is_delayed() {
  return module1_.regread(RegistryRoot::kLocalMachine, kDelayKey, "Homewardendelay",
                          "notdelayed") == "delayed";
}

// The profile first: it knows whether a missing event list is meant to be missing.
void Startup::recover_files() {
  profiles_.recover();
  files_.recover();
}

void Startup::show_web_port() {
  const std::string port =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "webport", "80");
  form_.Label48.caption = form_.Label48.caption.get() + " " + port;
  form_.txt_webport.text = port;
}

void Startup::place_window() {
  form_.left = static_cast<float>(leading_number(settings_.read("data", "left", "100")));
  form_.top = static_cast<float>(leading_number(settings_.read("data", "top", "100")));
  keep_on_screen(form_, desktop_);
}

void Startup::set_options() {
  form_.chk_startup.checked = is_delayed();
  fill_dim_list(form_);
  form_.chk_lww.checked = leading_number(settings_.read("data", "lww", "1")) != 0;
  form_.chk_service.checked = leading_number(settings_.read("data", "service", "0")) != 0;
}

Task<void> Startup::delayed_step() {
  form_.startuptimer.set_interval(0);  // before the search, which outlasts the interval
  tray_.loadtray();
  co_await pending_events(loop_);
  form_.ignoreclicks = false;
  restore_window_state();
  co_await steps_.finish(finder_.findinterface());
  if (form_.connected) web_server_.tell_failure();
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
