#pragma once

#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "ui/frm_main.h"

namespace homewarden {

// What the main window does for other parts, and its own menu.
class WindowServices {
 public:
  // Of the web server's panel, the button that shows the address in a browser.
  WindowServices(Window& window, ProgramMenu& menu, WebPanel& web, Flags& flags,
                 Operations& operations, Desktop& desktop, Dialogs& dialogs);

  // Keeps the window above all others, or returns it to the normal order. Size and place stay.
  void ontop();
  void offtop();

  // Opens an address in the person's browser; a message says when that fails, and is waited for.
  Task<void> link(std::string webaddress);

 private:
  Task<void> about();
  Task<void> show_url();

  Window& window_;
  WebPanel& web_;
  Flags& flags_;
  Desktop& desktop_;
  Dialogs& dialogs_;
};

}  // namespace homewarden
