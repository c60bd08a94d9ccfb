#include "app/common/machine.h"

#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>

namespace homewarden {
namespace {

constexpr std::chrono::seconds kStorePatience{3};  // for each file

// Where a server with TLS stands in front, the pages need not be reached past it.
http::HttpLimits web_limits() {
  http::HttpLimits limits;
  const char* address = std::getenv("HOMEWARDEN_WEB_ADDRESS");
  if (address && *address) limits.address = address;
  return limits;
}

os_linux::PortNames::Devices devices_for(const AppOptions& options) {
  return options.demo ? os_linux::PortNames::Devices::kLinksOnly
                      : os_linux::PortNames::Devices::kAll;
}

}  // namespace

Machine::Machine(const AppOptions& options, const os_linux::Folders& places)
    : folders(places),
      window_instance(places.machine / os_linux::kWindowLock),
      service_instance(places.machine / os_linux::kServiceLock),
      loop(options.time_lapse),
      printing(loop),
      registry(places.machine, places.user,
               [this](std::function<void()> function) { loop.post(std::move(function)); }),
      stream({places.machine, devices_for(options)}),
      interface_control(options.time_lapse.factor == 1 ? loop : interface_loop.emplace(), stream),
      web(
          loop, web_host,
          [this](int descriptor, std::function<void()> function) {
            loop.watch_readable(descriptor, std::move(function));
          },
          web_limits()) {
  if (os_linux::fill_application_folder(places.application)) return;
  folder_trouble = "The folder " + places.application.string() +
                   " cannot be written: changes of the house will be lost.";
  standard_error().print("Homewarden: " + folder_trouble);
}

HousePlatform Machine::platform(ServiceControl& services, SingleInstance& instance,
                                SingleInstance& counterpart, Dialogs& dialogs) {
  return {loop,
          files,
          registry,
          services,
          instance,
          counterpart,
          interface_control,
          dialogs,
          web,
          json,
          folders.application,
          "",
          folder_trouble};
}

void Machine::store_settings() {
  for (const std::string& file : registry.flush(kStorePatience))
    standard_error().print("Homewarden: " + file +
                           " could not be written; what changed in it last is lost.");
}

void report_escaped(std::exception_ptr error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& what) {
    standard_error().print(std::string("Homewarden: an operation ended with: ") + what.what());
  } catch (...) {
    standard_error().print("Homewarden: an operation ended with an unknown error");
  }
}

}  // namespace homewarden
