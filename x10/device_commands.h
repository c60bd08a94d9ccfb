#pragma once

#include <string>

#include "base/signal.h"
#include "base/task.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"
#include "ui/frm_main.h"

namespace homewarden {

// The four commands that everything that switches a device goes through. They report in the status
// line and record nothing; whether the command reached the power line is told in panel 3.
class DeviceCommands {
 public:
  DeviceCommands(FrmMain& form, EventLoop& loop, Module1& module1,
                 InterfaceControl& interface_control);

  // Switches on when `percent` is 100. Otherwise sets the brightness to `percent` and leaves
  // 100 - percent in it. Returns after a pause of one second, in which other commands may start.
  Task<void> turnon(std::string housecode, int anumber, int& percent);
  // A step of 20 % down or up; `percent` is not used.
  Task<void> turndim(std::string housecode, int anumber, int percent);
  Task<void> turnbright(std::string housecode, int anumber, int percent);
  // Pauses like turnon.
  Task<void> turnoff(std::string housecode, int anumber);

  // Raised at the end of turnon and turnoff, while `sending` is still set: what happened to which
  // device, as X10 functions: 2 on, 3 off, 4 dimmed.
  Signal<const std::string&, int, int> carried_out;

 private:
  class Sending;

  Task<void> send(std::string housecode, int anumber, int function, double amount);
  void report(const std::string& what, const std::string& address, const std::string& more = {});

  // `sending` keeps the command queue from starting a command while another one is being sent.
  FrmMain& form_;
  EventLoop& loop_;
  Module1& module1_;
  InterfaceControl& interface_;
  int commands_ = 0;  // being sent
};

}  // namespace homewarden
