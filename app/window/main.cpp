// The desktop program: puts the parts together on this machine and shows them.

#include <QApplication>
#include <QIcon>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <memory>

#include "app/common/end_signals.h"
#include "app/common/loop_report.h"
#include "app/common/options.h"
#include "app/common/serial_trace.h"
#include "app/common/standard_output.h"
#include "app/common/status_printer.h"
#include "app/common/terminal_dialogs.h"
#include "app/demo/demo_house.h"
#include "app/demo/demo_line.h"
#include "app/window/start_report.h"
#include "core/program/program.h"
#include "core/version.h"
#include "platform/cm11/driver.h"
#include "platform/desktop/qt_desktop.h"
#include "platform/desktop/qt_sound_player.h"
#include "platform/http/http_server.h"
#include "platform/linux/absent_services.h"
#include "platform/linux/linux_web_host.h"
#include "platform/linux/lock_file_instance.h"
#include "platform/linux/posix_files.h"
#include "platform/linux/window_call_pipe.h"
#include "platform/qt/qt_loop.h"
#include "platform/serial/qt_serial_stream.h"
#include "platform/store/sqlite_registry.h"
#include "ui/qt/main_window_view.h"
#include "ui/qt/qt_dialogs.h"
#include "ui/qt/tray_view.h"
#include "ui/qt/wait_window_view.h"

namespace homewarden {
namespace {

constexpr std::chrono::seconds kStorePatience{3};  // at the end, for each file

bool is_set(const char* name) {
  const char* value = std::getenv(name);
  return value && *value;
}

// Without a display the same program runs and prints what the status bar says.
bool choose_offscreen() {
  if (is_set("QT_QPA_PLATFORM")) return std::getenv("QT_QPA_PLATFORM") == std::string("offscreen");
  if (is_set("DISPLAY") || is_set("WAYLAND_DISPLAY")) return false;
  print_line("There is no display: Homewarden runs without a window and prints its status here.");
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  return true;
}

// Where a server with TLS stands in front, the pages need not be reached past it.
http::HttpLimits web_limits() {
  http::HttpLimits limits;
  if (is_set("HOMEWARDEN_WEB_ADDRESS")) limits.address = std::getenv("HOMEWARDEN_WEB_ADDRESS");
  return limits;
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

int run(const AppOptions& options, bool offscreen) {
  const os_linux::Folders folders =
      options.demo ? demo_folders() : os_linux::find_folders(options.folder);
  os_linux::LockFileInstance instance(folders.machine / os_linux::kWindowLock);
  os_linux::LockFileInstance service_instance(folders.machine / os_linux::kServiceLock);
  if (options.demo_reset && !instance.another_is_running() &&
      !service_instance.another_is_running())
    remove_demo(folders);
  if (!os_linux::fill_application_folder(folders.application))
    standard_error().print("Homewarden: the folder " + folders.application.string() +
                           " cannot be written; changes will be lost.");

  qt::QtLoop loop;
  const PrintFromLoop printing(loop);
  os_linux::PosixFiles files;
  store::SqliteRegistry registry(
      folders.machine, folders.user,
      [&loop](std::function<void()> function) { loop.post(std::move(function)); });
  os_linux::AbsentServices services;
  os_linux::WindowCallPipe window_call(folders.machine,
                                       [&loop](int descriptor, std::function<void()> function) {
                                         loop.watch_readable(descriptor, std::move(function));
                                       });
  serial::QtSerialStream stream({folders.machine, options.demo
                                                      ? os_linux::PortNames::Devices::kLinksOnly
                                                      : os_linux::PortNames::Devices::kAll});
  cm11::Driver interface_control(loop, stream);
  if (options.trace_serial) trace_serial_line(interface_control, loop);
  view::QtDialogs window_dialogs;
  TerminalDialogs terminal_dialogs;
  Dialogs& dialogs = offscreen ? static_cast<Dialogs&>(terminal_dialogs) : window_dialogs;
  desktop::QtDesktop desktop;
  desktop::QtSoundPlayer sounds;
  os_linux::LinuxWebHost web_host;
  http::HttpServer web(
      loop, web_host,
      [&loop](int descriptor, std::function<void()> function) {
        loop.watch_readable(descriptor, std::move(function));
      },
      web_limits());

  std::unique_ptr<DemoLine> line;
  // A second copy ends itself soon and must leave the first one's line alone.
  if (options.demo && instance.take()) {
    furnish_demo(folders, files, registry);
    line = std::make_unique<DemoLine>(
        loop, folders.machine / "ports" / ("com" + std::to_string(kDemoPort)), standard_output());
  }

  Program program({loop, files, registry, services, instance, service_instance, window_call,
                   interface_control, dialogs, desktop, sounds, web, folders.application, ""},
                  report_escaped);
  if (options.demo) program.frm_main.caption = "Homewarden - Demo";
  view::WaitWindowView wait_window(program.frm_wait);
  view::MainWindowView window(program.frm_main);
  view::TrayView tray(program.frmSysTray, program.frm_main);
  window_dialogs.set_parent(&window);
  if (offscreen) print_status_lines(program.frm_main.Statusbar);
  if (options.report_start) report_first_paint(window);
  if (options.report_loop) report_loop_turns();
  on_end_signal(loop, [&program] { program.frm_main.close_requested(); });

  program.start();
  const int result = QApplication::exec();
  program.end();  // before the windows go, which boxes that are still open belong to
  for (const std::string& file : registry.flush(kStorePatience))
    standard_error().print("Homewarden: " + file +
                           " could not be written; what changed in it last is lost.");
  return result;
}

}  // namespace
}  // namespace homewarden

int main(int argc, char* argv[]) {
  using namespace homewarden;
  os_linux::prepare_standard_streams();
  const bool offscreen = choose_offscreen();
  QApplication application(argc, argv);
  // No display name: the desktop would add it to the title of every window and box.
  QApplication::setApplicationName("homewarden");
  QApplication::setApplicationVersion(kVersion);
  QApplication::setDesktopFileName("homewarden");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(QIcon(":/icons/homewarden.png"));
  return run(parse_options(QApplication::arguments()), offscreen);
}
