#pragma once

#include <exception>
#include <optional>

#include "app/common/options.h"
#include "app/common/standard_output.h"
#include "platform/cm11/driver.h"
#include "platform/dialogs.h"
#include "platform/http/http_server.h"
#include "platform/json/nlohmann_json.h"
#include "platform/linux/folders.h"
#include "platform/linux/linux_web_host.h"
#include "platform/linux/lock_file_instance.h"
#include "platform/linux/posix_files.h"
#include "platform/platform.h"
#include "platform/qt/qt_loop.h"
#include "platform/serial/qt_serial_stream.h"
#include "platform/store/sqlite_registry.h"

namespace homewarden {

// The parts of this machine that window and service work on: the same files, the same settings.
struct Machine {
  // Fills the application folder and says so on standard error when it cannot be written.
  Machine(const AppOptions& options, const os_linux::Folders& places);

  HousePlatform platform(ServiceControl& services, SingleInstance& instance,
                         SingleInstance& counterpart, Dialogs& dialogs);
  // For the end: waits a few seconds for the settings to be on the disk, and says on standard error
  // what was lost.
  void store_settings();

  os_linux::Folders folders;
  std::string folder_trouble;  // "" when all is well
  os_linux::LockFileInstance window_instance;
  os_linux::LockFileInstance service_instance;
  qt::QtLoop loop;
  // In a time lapse: the interface goes on in its own time.
  std::optional<qt::QtLoop> interface_loop;
  PrintFromLoop printing;
  os_linux::PosixFiles files;
  store::SqliteRegistry registry;
  serial::QtSerialStream stream;
  cm11::Driver interface_control;
  os_linux::LinuxWebHost web_host;
  http::HttpServer web;
  json::NlohmannJson json;
};

// Says on standard error what an operation ended with that nobody caught.
void report_escaped(std::exception_ptr error);

}  // namespace homewarden
