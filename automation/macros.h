#pragma once

#include <string>

#include "core/list_file.h"
#include "ui/controls.h"
#include "ui/shared_state.h"

namespace homewarden {

// What the house does by itself when a device is switched.
class Macros {
 public:
  Macros(HiddenLists& lists, StatusBar& status, ListFile& macros);

  // Queues the commands of all macros that this device and X10 function (2 on, 3 off, 4 dimmed)
  // trigger, in the order of the list. Nothing when the list is missing or cannot be read.
  void amacros(const std::string& housecode, int anumber, int function);

 private:
  HiddenLists& lists_;
  StatusBar& status_;
  ListFile& macros_;
};

}  // namespace homewarden
