#pragma once

#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/notices.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/logon_entry.h"
#include "ui/controls.h"
#include "ui/home_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// The boxes that say when the program starts: by itself when the person logs on (hidden where that
// cannot be had), and 20 seconds later than it could. An entry that could not be written stands
// among the notices until one can.
class StartOptions {
 public:
  StartOptions(OptionsPanel& options, StatusBar& status, Flags& flags, Operations& operations,
               EventLoop& loop, Module1& module1, Settings& settings, Dialogs& dialogs,
               LogonEntry& entry, Notices& notices);

  // Sets the logon box to what is stored, without acting on it. Where nothing starts at logon, or
  // it has been switched off outside this program, it is cleared, and what is stored stays.
  void show_logon();
  // The entry is made to do what the box says of it: nothing may have been stored yet, somebody may
  // have removed it, or the program may lie elsewhere now.
  void renew_logon();

 private:
  Task<void> logon_clicked();
  void delay_clicked();
  void tell_logon(bool written);

  CheckBox& logon_;
  CheckBox& delay_;
  StatusBar& status_;
  EventLoop& loop_;
  Operations& operations_;
  Module1& module1_;
  Settings& settings_;
  Dialogs& dialogs_;
  LogonEntry& entry_;
  Notices& notices_;
  bool showing_ = false;  // the box is set, which is no click
};

}  // namespace homewarden
