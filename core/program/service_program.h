#pragma once

#include "base/operations.h"
#include "core/program/house_parts.h"
#include "core/program/service_life.h"
#include "platform/platform.h"
#include "ui/controls.h"
#include "ui/frm_main.h"

namespace homewarden {

// The program without a face: what holds the house, on its own.
class ServiceProgram {
 public:
  ServiceProgram(const HousePlatform& platform, Operations::ErrorHandler on_error);
  ServiceProgram(const ServiceProgram&) = delete;
  ServiceProgram& operator=(const ServiceProgram&) = delete;
  ~ServiceProgram();

  // Returns at its first wait; the rest happens from the event loop, which quits when the service
  // ends. To be called once. `frm_main.close_requested` asks it to end.
  void start();

  Label progress;  // what is being done at the start and at the end

 private:
  HouseParts house_;

 public:
  FrmMain& frm_main = house_.frm_main;

 private:
  ServiceLife life_;

 public:
  Signal<>& ready = life_.ready;
  Signal<>& leaving = life_.leaving;
};

}  // namespace homewarden
