#include "core/program/start_options.h"

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/asking.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

const char* const kSubject = "starting at logon";

}  // namespace

StartOptions::StartOptions(OptionsPanel& options, StatusBar& status, Flags& flags,
                           Operations& operations, EventLoop& loop, Module1& module1,
                           Settings& settings, Dialogs& dialogs, LogonEntry& entry,
                           Notices& notices)
    : logon_(options.chk_lww),
      delay_(options.chk_startup),
      status_(status),
      loop_(loop),
      operations_(operations),
      module1_(module1),
      settings_(settings),
      dialogs_(dialogs),
      entry_(entry),
      notices_(notices) {
  logon_.visible = entry.is_available();
  logon_.click.connect([this, &flags] {
    if (!showing_ && !flags.ignoreclicks) operations_.start(logon_clicked());
  });
  delay_.click.connect([this, &flags] {
    if (!flags.ignoreclicks) delay_clicked();
  });
}

void StartOptions::show_logon() {
  const FlagGuard showing(showing_);
  logon_.checked = entry_.is_available() && !entry_.is_switched_off() &&
                   leading_number(settings_.read("data", "lww", "1")) != 0;
}

void StartOptions::renew_logon() {
  // While nothing but defaults is known, a person who wants no start would get one.
  if (logon_.checked && settings_.are_known()) tell_logon(entry_.fill());
}

Task<void> StartOptions::logon_clicked() {
  const bool on = logon_.checked;
  settings_.write("data", "lww", on ? "1" : "0");
  const bool written = on ? entry_.fill() : entry_.clear();
  status_.panel2 =
      on ? "Homewarden will now load with Windows" : "Homewarden will no longer load with Windows";
  tell_logon(written);  // after the line, which would be untrue
  co_await pending_events(loop_);
}

void StartOptions::delay_clicked() {
  const bool on = delay_.checked;
  module1_.regwrite(RegistryRoot::kLocalMachine, kDelayKey, "Homewardendelay",
                    on ? "delayed" : "notdelayed");
  if (!on) return;
  operations_.start(tell(dialogs_,
                         "Please remember that if you are using the Run as Service option, that "
                         "the service will also wait 20 seonds before initializing",
                         "Service Information"));
}

void StartOptions::tell_logon(bool written) {
  if (written)
    notices_.withdraw(kSubject);
  else if (logon_.checked)
    notices_.tell(
        kSubject,
        "Homewarden will not start when you log on: the entry for that cannot be written.");
  else
    notices_.tell(kSubject,
                  "Homewarden goes on starting when you log on: the entry for that cannot be "
                  "emptied.");
}

}  // namespace homewarden
