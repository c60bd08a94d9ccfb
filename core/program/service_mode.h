#pragma once

#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/notices.h"
#include "core/program/service_call.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "platform/service_installer.h"
#include "ui/home_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// The box "Run as a service": installs the background service and removes it. Hidden where there
// can be none. What could not be done stands among the notices until the next change goes well.
class ServiceMode {
 public:
  ServiceMode(OptionsPanel& options, StatusBar& status, Flags& flags, Operations& operations,
              Module1& module1, Settings& settings, Dialogs& dialogs, ServiceInstaller& installer,
              ServiceCall& call, Notices& notices);

  // Sets the box to what is stored, without acting on it. Where there can be no service it is
  // cleared, and what is stored stays.
  void show_stored();
  // A service that the box tells of and that is not there is installed again.
  void install_missing();
  // Says that the service which the last window started has not come; once for each time.
  void tell_if_it_never_came();

  // To be called when events run at a full minute. The first one ever for this person ticks the
  // box; one without settings that can be read, or where there can be no service, does not count.
  void first_run();

  // A question that nobody has answered counts as answered with No. For the end.
  void stop_asking();

 private:
  void clicked();
  void turn_on();
  Task<void> tell_first_run();
  Task<void> turn_off();
  void show(bool ticked);

  CheckBox& box_;
  StatusBar& status_;
  Flags& flags_;
  Operations& operations_;
  Module1& module1_;
  Settings& settings_;
  Dialogs& dialogs_;
  ServiceInstaller& installer_;
  ServiceCall& call_;
  Notices& notices_;
  bool showing_ = false;  // the box is set, which is no click
  bool asking_ = false;
  Operations::Id question_ = 0;
};

}  // namespace homewarden
