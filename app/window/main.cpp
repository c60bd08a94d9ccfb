// The desktop program: puts the parts together on this machine and shows them.

#include <QApplication>
#include <QIcon>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
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
#include "app/window/background_service.h"
#include "app/window/service_at_exit.h"
#include "app/window/speech_ear.h"
#include "app/window/speech_parts.h"
#include "app/window/start_report.h"
#include "core/program/program.h"
#include "core/version.h"
#include "platform/desktop/qt_desktop.h"
#include "platform/desktop/qt_sound_player.h"
#include "platform/linux/descriptor_limit.h"
#include "platform/linux/window_call_pipe.h"
#include "ui/qt/appearance.h"
#include "ui/qt/main_window_view.h"
#include "ui/qt/qt_dialogs.h"
#include "ui/qt/speech_view.h"
#include "ui/qt/tray_view.h"
#include "ui/qt/wait_window_view.h"

namespace homewarden {
namespace {

bool is_set(const char* name) {
  const char* value = std::getenv(name);
  return value && *value;
}

// Without a display the same program runs and prints what the status bar says.
bool choose_offscreen() {
  if (is_set("QT_QPA_PLATFORM")) return std::getenv("QT_QPA_PLATFORM") == std::string("offscreen");
  if (is_set("DISPLAY") || is_set("WAYLAND_DISPLAY")) return false;
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  return true;
}

int run(const AppOptions& options, bool offscreen) {
  const os_linux::Folders folders =
      options.demo ? demo_folders() : os_linux::find_folders(options.folder);
  if (options.demo_reset) remove_demo(folders);
  Machine machine(options, folders);
  if (options.trace_serial) trace_serial_line(machine.interface_control, machine.loop);
  os_linux::WindowCallPipe window_call(
      folders.machine, [&machine](int descriptor, std::function<void()> function) {
        machine.loop.watch_readable(descriptor, std::move(function));
      });
  view::QtDialogs window_dialogs;
  TerminalDialogs terminal_dialogs(standard_output());
  Dialogs& dialogs = offscreen ? static_cast<Dialogs&>(terminal_dialogs) : window_dialogs;
  desktop::QtDesktop desktop;
  desktop::QtSoundPlayer sounds;

  std::unique_ptr<DemoLine> line;
  // A second copy ends itself soon and must leave the first one's line alone.
  if (options.demo && machine.window_instance.take()) {
    furnish_demo(folders, machine.files, machine.registry);
    line = std::make_unique<DemoLine>(machine.loop, folders.machine, standard_output());
  }

  const std::unique_ptr<SpeechParts> speech = make_speech(
      find_ear(machine.loop), machine.files, machine.registry, machine.loop, folders.application);
  BackgroundService background(options, offscreen);
  Program program({machine.platform(background.control(), machine.window_instance,
                                    machine.service_instance, dialogs),
                   window_call, desktop, sounds, background.installer(), background.logon_entry(),
                   speech->agent()},
                  report_escaped);
  if (options.demo) program.frm_main.caption = "Homewarden - Demo";
  view::WaitWindowView wait_window(program.frm_wait);
  view::MainWindowView window(program.frm_main);
  view::TrayView tray(program.frmSysTray, program.frm_main);
  window_dialogs.set_parent(&window);
  const auto speech_view = offscreen ? nullptr : speech->show(program.frm_main, &window);
  if (offscreen) print_status_lines(standard_output(), program.frm_main.Statusbar);
  if (options.report_start) report_first_paint(window);
  if (options.report_loop) report_loop_turns();
  on_end_signal(machine.loop, [&program] { program.frm_main.close_requested(); });

  ServiceAtExit service_at_exit([&machine, &background, &program] {
    if (!program.wants_service()) return;
    machine.store_settings();
    background.start_at_exit();
  });
  program.start();
  const int result = QApplication::exec();
  if (result == 0) service_at_exit.disarm();
  program.end();  // before the windows go, which boxes that are still open belong to
  machine.store_settings();
  return result;
}

}  // namespace
}  // namespace homewarden

int main(int argc, char* argv[]) {
  using namespace homewarden;
  os_linux::prepare_standard_streams();
  os_linux::raise_descriptor_limit();
  const bool is_chosen = is_set("QT_QPA_PLATFORM");
  const bool offscreen = choose_offscreen();
  QApplication application(argc, argv);
  // No display name: the desktop would add it to the title of every window and box.
  QApplication::setApplicationName("homewarden");
  QApplication::setApplicationVersion(kVersion);
  QApplication::setDesktopFileName("homewarden");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(QIcon(":/icons/homewarden.png"));
  const AppOptions options = parse_options(QApplication::arguments(), Face::kWindow);
  view::Appearance appearance;
  if (offscreen && !is_chosen)
    print_line(standard_output(),
               "There is no display: Homewarden runs without a window and prints its status here.");
  return run(options, offscreen);
}
