#include "core/program/service_program.h"

#include <utility>

namespace homewarden {

ServiceProgram::ServiceProgram(const HousePlatform& platform, Operations::ErrorHandler on_error)
    : house_(platform, std::move(on_error), progress),
      life_(frm_main, frm_main.Statusbar, frm_main, frm_main, house_.operations, platform.loop,
            house_.module1, platform.registry, house_.steps, platform.instance,
            platform.counterpart, house_.startup, house_.shutdown, house_.requests,
            house_.web_server, house_.finder) {}

ServiceProgram::~ServiceProgram() {
  house_.operations.destroy_all();
}

void ServiceProgram::start() {
  house_.store_notices.look();
  life_.start();
}

}  // namespace homewarden
