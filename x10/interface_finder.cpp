#include "x10/interface_finder.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "core/asking.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr int kLastPort = 15;         // that a person may name
constexpr int kReportEverything = 4;  // NumericOption

// Seconds between looks: doubled each time.
constexpr int kFirstInterval = 5;
constexpr int kLongestInterval = 60;
constexpr int kLongestAtFirst = 5;  // while a person stands before the page that waits for it

}  // namespace

InterfaceFinder::InterfaceFinder(Window& window, HomePanel& home, InterfacePanel& panel,
                                 const FirstRunPanel& first_run, StatusBar& status, Flags& flags,
                                 ProgramTimers& timers, Operations& operations, EventLoop& loop,
                                 Module1& module1, InterfaceControl& interface_control,
                                 Dialogs& dialogs, Notices& notices)
    : window_(window),
      panel_(panel),
      first_run_(first_run),
      status_(status),
      flags_(flags),
      timers_(timers),
      operations_(operations),
      loop_(loop),
      module1_(module1),
      interface_(interface_control),
      dialogs_(dialogs),
      notices_(notices),
      ports_(status, loop, module1, interface_control) {
  home.Label51.click.connect([this] { begin(search_all_ports()); });
  home.Label63.click.connect([this] { operations_.start(ask_for_port()); });
}

void InterfaceFinder::findinterface() {
  begin(search());
}

void InterfaceFinder::begin(Task<void> search) {
  if (stopped_) return;
  operations_.end(search_);
  operations_.end(message_);
  search_ = operations_.start(std::move(search));
}

void InterfaceFinder::stop() {
  stopped_ = true;
  operations_.end(search_);
  operations_.end(message_);
}

Task<void> InterfaceFinder::search() {
  busy_.emplace(window_);
  status_.panel2 = "Please wait, connecting to X10 Interface";
  co_await pending_events(loop_);

  const PortTrial::Result result = co_await ports_.try_ports(PortTrial::Manner::kThorough);
  tell_of_refused_ports(result);
  if (result.port != 0) {
    co_await use(result.port);
    co_return;
  }
  report_failure(result.stored_port_failed);
  co_await look_again();
}

// Neither locks the window nor speaks in the status line.
Task<void> InterfaceFinder::look_again() {
  PortTrial::Result result;
  for (int interval = kFirstInterval; result.port == 0;
       interval =
           std::min(2 * interval, first_run_.is_first_run ? kLongestAtFirst : kLongestInterval)) {
    status_.panel3 = "STATUS: No interface found, looking again";
    co_await module1_.pause(interval);
    result = co_await ports_.try_ports(PortTrial::Manner::kQuiet);
    tell_of_refused_ports(result);
  }
  operations_.end(message_);
  co_await use(result.port);
}

Task<void> InterfaceFinder::use(int port) {
  const std::string number = std::to_string(port);
  status_.panel3 = "STATUS: Ready";
  co_await pending_events(loop_);
  flags_.connected = true;
  interface_.NumericOption(kReportEverything);
  interface_.ClientName("Homewarden");
  status_.panel2 = "Found and Initialized Interface on com port " + number;
  co_await pending_events(loop_);
  ports_.store_port(number);
  allow_input();
  arm_timers();
  status_.panel2 = "Found and Initialized Interface on com port " + number + ", timer " +
                   std::to_string(timers_.eventtimer.interval());
  found();
}

// The house goes on without an interface: the window, the clock and the events.
void InterfaceFinder::report_failure(bool stored_port_failed) {
  allow_input();
  if (timers_.timetimer.interval() == 0) arm_timers();
  if (stored_port_failed) flags_.connected = false;
  status_.panel2 = "ERROR! Could not find your X10 Interface";
  std::string text =
      stored_port_failed
          ? "ERROR: Could not initialize your X10 Home Control unit. Please double check that you "
            "have selected the correct comm port for the unit and that it is plugged in and has "
            "backup batteries installed."
          : "Sorry, Could not find a CM11 or CM12 Home Control Interface on any of your computer "
            "ports. Cant control your interface until it`s sorted.";
  if (first_run_.is_first_run) {
    panel_.lab_notfound.caption = std::move(text);
    panel_.lab_notfound.visible = true;
    return;
  }
  std::string title = stored_port_failed ? "Error" : "ERROR!";
  message_ =
      operations_.start(tell(dialogs_, std::move(text), std::move(title), MessageIcon::kCritical));
}

// A port that could be opened needs no permission, whatever is at its other end.
void InterfaceFinder::tell_of_refused_ports(const PortTrial::Result& result) {
  const bool could_open = result.port != 0 || result.stored_port_failed;
  notices_.tell("serial ports", could_open ? "" : interface_.refused_ports());
}

void InterfaceFinder::arm_timers() {
  timers_.timetimer.set_interval(1000);
  timers_.eventtimer.set_interval((60 - loop_.local_time().second) * 1000);
}

void InterfaceFinder::allow_input() {
  busy_.reset();
}

Task<void> InterfaceFinder::search_all_ports() {
  co_await close_interface(interface_, module1_);
  ports_.store_port("none");
  co_await search();
}

// A search that runs goes on until there is an answer.
Task<void> InterfaceFinder::ask_for_port() {
  Question question{"Please enter the port number that your X10 interface is connected to",
                    "X10 Interface", "2", false};
  const auto answer = co_await dialogs_.input_box(std::move(question));
  if (!answer) co_return;
  const int port = to_integer16(*answer).value_or(0);
  if (port < 1 || port > kLastPort) {
    co_await tell_error(dialogs_, "Sorry, that was a silly number. Please try again");
    co_return;
  }
  ports_.store_port(std::to_string(port));
  findinterface();
}

Task<void> close_interface(InterfaceControl& interface_control, Module1& module1) {
  const bool closed = co_await interface_control.CloseInterface();
  if (closed) co_return;
  co_await module1.pause(1);
  co_await interface_control.CloseInterface();
}

}  // namespace homewarden
