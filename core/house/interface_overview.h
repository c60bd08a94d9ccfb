#pragma once

#include "core/module1.h"
#include "core/notices.h"
#include "ui/home_panel.h"
#include "ui/interface_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// Says in words how the X10 interface is, and what to do, by what the status bar, the notices and
// the search for it tell.
class InterfaceOverview {
 public:
  InterfaceOverview(InterfacePanel& panel, HomePanel& home, StatusBar& status, const Flags& flags,
                    Module1& module1, Notices& notices);

 private:
  void show();
  InterfaceCondition condition() const;
  InterfacePanel::Search search(InterfaceCondition condition) const;

  InterfacePanel& panel_;
  StatusBar& status_;
  const Flags& flags_;
  Module1& module1_;
  Notices& notices_;
};

}  // namespace homewarden
