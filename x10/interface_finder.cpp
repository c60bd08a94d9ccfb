#include "x10/interface_finder.h"

#include <utility>

#include "base/text.h"
#include "core/settings.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr int kLastPort = 15;
constexpr int kRetries = 3;
constexpr int kRetryPause = 5;
constexpr int kReportEverything = 4;  // NumericOption

}  // namespace

InterfaceFinder::InterfaceFinder(FrmMain& form, Operations& operations, EventLoop& loop,
                                 Module1& module1, InterfaceControl& interface_control,
                                 Dialogs& dialogs)
    : form_(form),
      loop_(loop),
      module1_(module1),
      interface_(interface_control),
      dialogs_(dialogs) {
  form.Label51.click.connect([this, &operations] { operations.start(search_all_ports()); });
  form.Label63.click.connect([this, &operations] { operations.start(ask_for_port()); });
}

Task<void> InterfaceFinder::findinterface() {
  form_.mouse_pointer = MousePointer::kHourglass;
  form_.enabled = false;
  form_.Statusbar.panel2 = "Please wait, connecting to X10 Interface";
  co_await pending_events(loop_);

  int skipped_port = 0;
  const std::string stored = stored_port();
  if (stored != "none") {
    const int port = static_cast<int>(leading_number(stored));
    const StoredPort result = co_await try_stored_port(port);
    if (result == StoredPort::kFound) {
      co_await found(port);
      co_return;
    }
    if (result == StoredPort::kNotAnswering) {
      co_await give_up_stored_port();
      co_return;
    }
    skipped_port = port;
  }

  const int port = co_await scan_ports(skipped_port);
  if (port != 0) {
    co_await found(port);
    co_return;
  }
  allow_input();
  form_.Statusbar.panel3 = "STATUS: No interface found";
  co_await tell(
      "Sorry, Could not find a CM11 or CM12 Home Control Interface on any of your computer ports. "
      "Cant control your interface until it`s sorted.",
      "ERROR!");
}

Task<InterfaceFinder::StoredPort> InterfaceFinder::try_stored_port(int port) {
  interface_.PortNumber(port);
  for (int retry = 0;; ++retry) {
    const int status = co_await interface_.OpenInterface();
    if (status == 0) {
      form_.Statusbar.panel3 = "STATUS: Ready";
      co_await pending_events(loop_);
      form_.connected = true;
      co_return StoredPort::kFound;
    }
    if (status == 1) co_return StoredPort::kUnusable;
    if (retry == kRetries) co_return StoredPort::kNotAnswering;
    co_await module1_.pause(kRetryPause);
  }
}

Task<int> InterfaceFinder::scan_ports(int skipped_port) {
  for (int port = 1; port <= kLastPort; ++port) {
    if (port == skipped_port) continue;
    form_.Statusbar.panel2 =
        "Please wait, looking for interface on com port " + std::to_string(port);
    co_await pending_events(loop_);
    interface_.PortNumber(port);
    const int status = co_await interface_.OpenInterface();
    if (status != 0) continue;
    form_.connected = true;
    form_.Statusbar.panel3 = "STATUS: Ready";
    co_return port;
  }
  co_return 0;
}

Task<void> InterfaceFinder::give_up_stored_port() {
  co_await tell(
      "ERROR: Could not initialize your X10 Home Control unit. Please double check that you have "
      "selected the correct comm port for the unit and that it is plugged in and has backup "
      "batteries installed.",
      "Error");
  form_.connected = false;
  form_.Statusbar.panel2 = "ERROR! Could not find your X10 Interface";
  form_.close_requested();
}

Task<void> InterfaceFinder::found(int port) {
  const std::string number = std::to_string(port);
  interface_.NumericOption(kReportEverything);
  interface_.ClientName("Homewarden");
  form_.Statusbar.panel2 = "Found and Initialized Interface on com port " + number;
  co_await pending_events(loop_);
  store_port(number);
  allow_input();

  form_.timetimer.set_interval(1000);
  form_.eventtimer.set_interval((60 - loop_.local_time().second) * 1000);
  form_.Statusbar.panel2 = "Found and Initialized Interface on com port " + number + ", timer " +
                           std::to_string(form_.eventtimer.interval());
}

void InterfaceFinder::allow_input() {
  form_.enabled = true;
  form_.mouse_pointer = MousePointer::kNormal;
}

std::string InterfaceFinder::stored_port() {
  return module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "port", "none");
}

void InterfaceFinder::store_port(const std::string& port) {
  module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "port", port);
}

Task<void> InterfaceFinder::search_all_ports() {
  co_await close_interface(interface_, module1_);
  store_port("none");
  co_await findinterface();
}

Task<void> InterfaceFinder::ask_for_port() {
  Question question{"Please enter the port number that your X10 interface is connected to",
                    "X10 Interface", "2", false};
  const auto answer = co_await dialogs_.input_box(std::move(question));
  const int port = to_integer16(answer.value_or("")).value_or(0);
  if (port < 1 || port > kLastPort) {
    co_await tell("Sorry, that was a silly number. Please try again", "Error");
    co_return;
  }
  store_port(std::to_string(port));
  co_await findinterface();
}

Task<void> InterfaceFinder::tell(const char* text, const char* title) {
  Message message{text, title, MessageIcon::kCritical, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

Task<void> close_interface(InterfaceControl& interface_control, Module1& module1) {
  const bool closed = co_await interface_control.CloseInterface();
  if (closed) co_return;
  co_await module1.pause(1);
  co_await interface_control.CloseInterface();
}

}  // namespace homewarden
