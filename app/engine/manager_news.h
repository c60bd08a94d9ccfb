#pragma once

#include <chrono>

#include "core/program/service_program.h"
#include "platform/event_loop.h"

namespace homewarden {

// Tells the service manager that started this process how the service fares: that it is ready, what
// its status line says, that its loop still turns, that it ends. Does nothing where no manager
// asks for that in the environment.
class ManagerNews {
 public:
  ManagerNews(EventLoop& loop, ServiceProgram& service);
  ManagerNews(const ManagerNews&) = delete;
  ManagerNews& operator=(const ManagerNews&) = delete;
  ~ManagerNews();

 private:
  void tell_ready();
  void tell_leaving();
  void tell_status(const std::string& text);
  void prove_life();

  EventLoop& loop_;
  bool is_ready_ = false;
  bool is_leaving_ = false;
  std::chrono::milliseconds proof_interval_{0};
  EventLoop::CallId proof_ = 0;
};

}  // namespace homewarden
