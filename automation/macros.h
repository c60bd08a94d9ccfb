#pragma once

#include <string>

#include "core/list_file.h"
#include "ui/frm_main.h"

namespace homewarden {

// What the house does by itself when a device is switched.
class Macros {
 public:
  Macros(FrmMain& form, ListFile& macros);

  // Queues the commands of all macros that this device and X10 function (2 on, 3 off, 4 dimmed)
  // trigger, in the order of the list.
  void amacros(const std::string& housecode, int anumber, int function);

 private:
  FrmMain& form_;
  ListFile& macros_;
};

}  // namespace homewarden
