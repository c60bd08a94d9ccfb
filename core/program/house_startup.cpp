#include "core/program/house_startup.h"

#include <algorithm>
#include <string>

#include "core/house/noted_type.h"

namespace homewarden {

HouseStartup::HouseStartup(HiddenLists& lists, Flags& flags, OnceRemoval& once,
                           OptionsPanel& options, ProgramTimers& timers, Steps& steps,
                           Module1& module1, Settings& settings, SingleInstance& counterpart,
                           RoomList& rooms, HouseFiles& files, ProfileSwitch& profiles,
                           Location& location, WebServer& web_server)
    : lists_(lists),
      flags_(flags),
      once_(once),
      options_(options),
      timers_(timers),
      steps_(steps),
      module1_(module1),
      settings_(settings),
      counterpart_(counterpart),
      rooms_(rooms),
      files_(files),
      profiles_(profiles),
      location_(location),
      web_server_(web_server) {
  timers.statetimer.tick.connect([this] {
    // One that was stopped for the end stays so, however long the last command takes.
    if (waits_for_port_ && web_server_.is_wanted()) steps_.run([this] { start_web_server(); });
  });
}

void HouseStartup::begin_loading() {
  flags_.formloading = true;
  lists_.txt_queue.text = std::string();
  flags_.sending = false;
}

// What is not known yet would be taken for its default, and some defaults be written over it.
Task<void> HouseStartup::learn_settings() {
  for (const RegistryRoot root : {RegistryRoot::kLocalMachine, RegistryRoot::kCurrentUser}) {
    if (module1_.is_known(root)) continue;
    co_await steps_.progress("Waiting for the settings");
    co_await module1_.known(root);
  }
  co_await module1_.stored(RegistryRoot::kLocalMachine);
}

void HouseStartup::mark_installed() {
  steps_.run([this] {
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "installing", "False");
  });
}

Task<void> HouseStartup::load_lists() {
  co_await steps_.progress("Loading Lists");
  steps_.run([this] { recover_files(); });
  co_await steps_.finish(rooms_.loadlists());
}

// The profile first: it knows whether a missing event list is meant to be missing. A service that
// would not stop may be in the middle of what looks unfinished.
void HouseStartup::recover_files() {
  if (counterpart_.another_is_running()) return;
  profiles_.recover();
  files_.recover();
  settle_type(settings_, files_.rooms);
}

void HouseStartup::forget_once_events() {
  std::fill_n(once_.once_removal.begin(), OnceRemoval::kOnceSlots, std::string());
}

void HouseStartup::compute_sun_times() {
  steps_.run([this] { options_.Check1.checked = settings_.read("data", "dst", "0") != "0"; });
  steps_.run([this] { location_.dosunset(); });
}

// A service that would not stop may still have the port: another one would be stored for good.
void HouseStartup::start_web_server() {
  waits_for_port_ = counterpart_.another_is_running();
  if (waits_for_port_)
    web_server_.start_on_stored_port();
  else
    web_server_.startserver();
}

void HouseStartup::begin_work() {
  steps_.run([this] { start_web_server(); });
  timers_.timerdelete.set_enabled(true);
  flags_.formloading = false;
}

}  // namespace homewarden
