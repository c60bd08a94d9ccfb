#pragma once

#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "platform/interface_control.h"
#include "ui/frm_main.h"

namespace homewarden {

// Finds the X10 interface on COM ports 1 to 15, remembers the port that worked and arms the clock
// timers. Connects the two links of the home page that search again.
class InterfaceFinder {
 public:
  InterfaceFinder(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
                  InterfaceControl& interface_control, Dialogs& dialogs);

  // The window is disabled meanwhile. A stored port that does not answer after four tries ends the
  // program, after a message.
  Task<void> findinterface();

 private:
  enum class StoredPort { kFound, kUnusable, kNotAnswering };

  Task<StoredPort> try_stored_port(int port);
  Task<int> scan_ports(int skipped_port);
  Task<void> give_up_stored_port();
  Task<void> found(int port);
  Task<void> tell(const char* text, const char* title);
  void allow_input();
  std::string stored_port();
  void store_port(const std::string& port);

  Task<void> search_all_ports();  // Label51
  Task<void> ask_for_port();      // Label63

  FrmMain& form_;
  EventLoop& loop_;
  Module1& module1_;
  InterfaceControl& interface_;
  Dialogs& dialogs_;
};

// Takes two tries; the second result does not matter.
Task<void> close_interface(InterfaceControl& interface_control, Module1& module1);

}  // namespace homewarden
