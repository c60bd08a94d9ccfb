#include "app/window/service_at_exit.h"

#include <cstdlib>
#include <utility>

namespace homewarden {
namespace {

// exit() destroys no object of a function that is still running: they are all there.
std::function<void()> at_exit;

}  // namespace

ServiceAtExit::ServiceAtExit(std::function<void()> start_service)
    : start_service_(std::move(start_service)) {
  at_exit = [this] { act(); };
  std::atexit([] {
    if (at_exit) at_exit();
  });
}

ServiceAtExit::~ServiceAtExit() {
  act();
  at_exit = nullptr;
}

void ServiceAtExit::act() {
  if (const auto start = std::exchange(start_service_, nullptr)) start();
}

}  // namespace homewarden
