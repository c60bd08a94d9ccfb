#pragma once

#include <optional>

#include "base/operations.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/notices.h"
#include "platform/dialogs.h"
#include "platform/interface_control.h"
#include "ui/busy_window.h"
#include "ui/first_run_panel.h"
#include "ui/home_panel.h"
#include "ui/interface_panel.h"
#include "ui/shared_state.h"
#include "x10/port_trial.h"

namespace homewarden {

// Finds the X10 interface on COM ports 1 to 15, remembers the port that worked and arms the clock
// timers. While there is none it goes on looking. Connects the two links of the home page that
// search again. When none answers and there are ports that this person may not open, a notice says
// so.
class InterfaceFinder {
 public:
  InterfaceFinder(Window& window, HomePanel& home, InterfacePanel& panel,
                  const FirstRunPanel& first_run, StatusBar& status, Flags& flags,
                  ProgramTimers& timers, Operations& operations, EventLoop& loop, Module1& module1,
                  InterfaceControl& interface_control, Dialogs& dialogs, Notices& notices);

  // Begins a search, ending one that runs. The window is disabled until it has ended. When nothing
  // was found a message says so, on the page of the first run where that is shown, and ports are
  // looked at again and again, at most a minute apart, until an interface answers, which closes the
  // message.
  void findinterface();

  // Ends what runs, and its message; nothing is searched from now on, whatever is clicked.
  void stop();

  // Raised when an interface has answered and is ready.
  Signal<> found;

 private:
  void begin(Task<void> search);
  Task<void> search();
  Task<void> look_again();
  Task<void> use(int port);
  void report_failure(bool stored_port_failed);
  void tell_of_refused_ports(const PortTrial::Result& result);
  void arm_timers();
  void allow_input();

  Task<void> search_all_ports();  // Label51
  Task<void> ask_for_port();      // Label63

  Window& window_;
  InterfacePanel& panel_;
  const FirstRunPanel& first_run_;
  std::optional<BusyWindow> busy_;  // during the first search
  StatusBar& status_;
  Flags& flags_;
  ProgramTimers& timers_;
  Operations& operations_;
  EventLoop& loop_;
  Module1& module1_;
  InterfaceControl& interface_;
  Dialogs& dialogs_;
  Notices& notices_;
  PortTrial ports_;
  Operations::Id search_ = 0;   // the one that runs, and the looks that follow it
  Operations::Id message_ = 0;  // that nothing was found
  bool stopped_ = false;
};

// Takes two tries, a second apart when the first one fails; the second result does not matter.
Task<void> close_interface(InterfaceControl& interface_control, Module1& module1);

}  // namespace homewarden
