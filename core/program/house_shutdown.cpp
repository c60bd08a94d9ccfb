#include "core/program/house_shutdown.h"

#include "core/lists/file_lock.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience{30000};  // with the command on the line
constexpr milliseconds kStep{100};

}  // namespace

HouseShutdown::HouseShutdown(Window& window, HiddenLists& lists, Flags& flags,
                             ProgramTimers& timers, Steps& steps, InterfaceFinder& finder,
                             IncomingTraffic& incoming, EventCleanup& cleanup, EventLoop& loop,
                             Module1& module1, InterfaceControl& interface_control)
    : window_(window),
      lists_(lists),
      flags_(flags),
      timers_(timers),
      steps_(steps),
      finder_(finder),
      incoming_(incoming),
      cleanup_(cleanup),
      loop_(loop),
      module1_(module1),
      interface_(interface_control) {}

void HouseShutdown::take_nothing_more() {
  begins();
  busy_.emplace(window_);
  finder_.stop();
  for (Timer* timer : {&timers_.timerdelete, &timers_.timetimer, &timers_.eventtimer})
    timer->set_enabled(false);
  timers_.timerqueue.set_interval(static_cast<int>(kStep.count()));
}

Task<void> HouseShutdown::finish_commands() {
  if (is_busy()) co_await steps_.progress("Waiting for the last command");
  for (; is_busy() && waited_ < kPatience; waited_ += kStep) co_await Delay(loop_, kStep);
}

bool HouseShutdown::is_busy() const {
  return flags_.sending || flags_.filebusy || !lists_.txt_queue.text.get().empty() ||
         incoming_.is_handling() || interface_.is_receiving();
}

void HouseShutdown::remove_due_events() {
  if (flags_.filebusy) return;
  const FileLock files(flags_);
  steps_.run([this] { cleanup_.remove_due_events(); });
}

Task<void> HouseShutdown::close_port() {
  co_await steps_.progress("Closing Port");
  co_await finish_commands();
  timers_.timerqueue.set_enabled(false);
  co_await steps_.finish(close_interface(interface_, module1_));
}

}  // namespace homewarden
