#include "core/program/service_mode.h"

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/asking.h"
#include "core/program/steps.h"

namespace homewarden {
namespace {

const char* const kSubject = "the background service";
const char* const kCallSubject = "the last start of the background service";

const char* const kQuestion =
    "Turning this off will disable the Web Server and also mean that your events WONT run when you "
    "close the program. With the service enabled, your events will still run when you close this "
    "program and your Web Server will also work.\r\n\r\nDo you really want to stop the service?";

}  // namespace

ServiceMode::ServiceMode(OptionsPanel& options, StatusBar& status, Flags& flags,
                         Operations& operations, Module1& module1, Settings& settings,
                         Dialogs& dialogs, ServiceInstaller& installer, ServiceCall& call,
                         Notices& notices)
    : box_(options.chk_service),
      status_(status),
      flags_(flags),
      operations_(operations),
      module1_(module1),
      settings_(settings),
      dialogs_(dialogs),
      installer_(installer),
      call_(call),
      notices_(notices) {
  box_.visible = installer.is_available();
  box_.click.connect([this] { clicked(); });
  installer.reported.connect([this](const std::string& text) { notices_.tell(kSubject, text); });
}

void ServiceMode::show_stored() {
  show(installer_.is_available() && leading_number(settings_.read("data", "service", "0")) != 0);
}

void ServiceMode::install_missing() {
  if (box_.checked && module1_.servicestatus("", kServiceName).empty()) installer_.install();
}

void ServiceMode::tell_if_it_never_came() {
  if (!box_.checked || !call_.was_in_vain()) return;
  notices_.tell(kCallSubject,
                "The background service did not start when the window was closed the last time, so "
                "that nothing ran meanwhile. Its log says why.");
}

void ServiceMode::first_run() {
  if (!installer_.is_available() || !settings_.are_known()) return;
  if (settings_.read("data", "run1", "False") != "False") return;
  settings_.write("data", "run1", "True");
  // A person who is being asked about it has found the box.
  if (box_.checked || asking_) return;
  // Not by a click, which would be lost while clicks are ignored.
  show(true);
  turn_on();
  operations_.start(tell_first_run());
}

// After what the events of that minute say.
Task<void> ServiceMode::tell_first_run() {
  co_await module1_.pause(3);
  status_.panel2 =
      "From now on a service runs your events and web pages while this window is closed; \"Run as "
      "a service\" in the settings switches that off";
}

void ServiceMode::stop_asking() {
  if (!asking_) return;
  operations_.end(question_);
  show(true);
}

void ServiceMode::clicked() {
  if (showing_ || flags_.ignoreclicks) return;
  if (box_.checked) {
    stop_asking();
    turn_on();
  } else if (!asking_) {
    question_ = operations_.start(turn_off());
  }
}

void ServiceMode::turn_on() {
  settings_.write("data", "service", "1");
  installer_.install();
}

Task<void> ServiceMode::turn_off() {
  bool sure = false;
  {
    const FlagGuard asking(asking_);
    sure = co_await ask(dialogs_, kQuestion, "Stop service?");
  }
  if (!sure) {
    show(true);
    co_return;
  }
  settings_.write("data", "service", "0");
  notices_.withdraw(kSubject);
  installer_.remove();
}

void ServiceMode::show(bool ticked) {
  const FlagGuard showing(showing_);
  box_.checked = ticked;
}

}  // namespace homewarden
