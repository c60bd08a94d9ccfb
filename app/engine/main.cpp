// The background service: runs the house while the window is closed, without a display.

#include <QCoreApplication>
#include <memory>
#include <utility>

#include "app/common/end_signals.h"
#include "app/common/loop_report.h"
#include "app/common/machine.h"
#include "app/common/options.h"
#include "app/common/serial_trace.h"
#include "app/common/standard_output.h"
#include "app/common/status_printer.h"
#include "app/common/terminal_dialogs.h"
#include "app/demo/demo_house.h"
#include "app/demo/demo_line.h"
#include "app/engine/manager_news.h"
#include "core/program/service_program.h"
#include "core/version.h"
#include "platform/linux/absent_services.h"
#include "platform/linux/descriptor_limit.h"
#include "platform/linux/service_command.h"
#include "platform/linux/supervisor.h"

namespace homewarden {
namespace {

int run(const AppOptions& options) {
  const os_linux::Folders folders =
      options.demo ? demo_folders() : os_linux::find_folders(options.folder);
  if (options.demo_reset) remove_demo(folders);
  Machine machine(options, folders);
  if (options.trace_serial) trace_serial_line(machine.interface_control, machine.loop);
  TerminalDialogs dialogs(standard_error());

  std::unique_ptr<DemoLine> line;
  // A copy that ends itself soon must leave the line of the one that runs alone.
  if (options.demo && !machine.window_instance.another_is_running() &&
      machine.service_instance.take()) {
    furnish_demo(folders, machine.files, machine.registry);
    line = std::make_unique<DemoLine>(machine.loop, folders.machine, standard_error());
  }

  os_linux::AbsentServices services;  // it is the service
  ServiceProgram service(
      machine.platform(services, machine.service_instance, machine.window_instance, dialogs),
      report_escaped);
  print_status_lines(standard_error(), service.frm_main.Statusbar);
  print_changes(standard_error(), service.progress.caption);
  ManagerNews news(machine.loop, service);
  if (options.report_loop) report_loop_turns();
  on_end_signal(machine.loop, [&service] { service.frm_main.close_requested(); });

  service.start();
  const int result = QCoreApplication::exec();
  machine.store_settings();
  return result;
}

int supervise(const AppOptions& options) {
  if (options.demo) {
    standard_error().print("wardengine: the demo has no supervisor.");
    return 1;
  }
  os_linux::ServiceCommand command = os_linux::service_command(options.folder);
  if (options.trace_serial) command.arguments.push_back("--trace-serial");
  return os_linux::Supervisor(os_linux::find_folders(options.folder).machine, std::move(command),
                              options.stop_limit.value_or(os_linux::Supervisor::kStopLimit))
      .run();
}

}  // namespace
}  // namespace homewarden

int main(int argc, char* argv[]) {
  using namespace homewarden;
  os_linux::prepare_standard_streams();
  os_linux::raise_descriptor_limit();
  QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName("wardengine");
  QCoreApplication::setApplicationVersion(kVersion);
  const AppOptions options = parse_options(QCoreApplication::arguments(), Face::kNone);
  return options.supervise ? supervise(options) : run(options);
}
