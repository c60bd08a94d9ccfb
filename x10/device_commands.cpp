#include "x10/device_commands.h"

#include "core/time_text.h"
#include "platform/waiting.h"

namespace homewarden {
// `sending` is set as long as one of these lives.
class DeviceCommands::Sending {
 public:
  explicit Sending(DeviceCommands& commands) : commands_(commands) {
    ++commands_.commands_;
    commands_.form_.sending = true;
  }
  Sending(const Sending&) = delete;
  Sending& operator=(const Sending&) = delete;
  ~Sending() { commands_.form_.sending = --commands_.commands_ > 0; }

 private:
  DeviceCommands& commands_;
};

DeviceCommands::DeviceCommands(FrmMain& form, EventLoop& loop, Module1& module1,
                               InterfaceControl& interface_control)
    : form_(form), loop_(loop), module1_(module1), interface_(interface_control) {}

Task<void> DeviceCommands::turnon(std::string housecode, int anumber, int& percent) {
  const Sending sending(*this);
  const std::string address = housecode + std::to_string(anumber);
  const bool dims = percent != 100;
  if (dims) {
    form_.Statusbar.panel2 = "Please wait, setting dim level";
    co_await pending_events(loop_);
    const int wanted = percent;
    percent = 100 - wanted;
    co_await send(housecode, anumber, kX10On, 0);
    co_await send(housecode, anumber, kX10Bright, 100);
    co_await send(housecode, anumber, kX10Dim, percent);
    report("DIMMED device", address, " to " + std::to_string(wanted) + "%");
  } else {
    co_await send(housecode, anumber, kX10On, 20);
    report("Turned ON device", address);
  }
  co_await module1_.pause(1);
  carried_out(housecode, anumber, dims ? kX10Dim : kX10On);
}

Task<void> DeviceCommands::turndim(std::string housecode, int anumber, int /*percent*/) {
  const Sending sending(*this);
  co_await send(housecode, anumber, kX10Dim, 20);
  report("DIMMED device", housecode + std::to_string(anumber));
}

Task<void> DeviceCommands::turnbright(std::string housecode, int anumber, int /*percent*/) {
  co_await send(housecode, anumber, kX10Bright, 20);
  report("BRIGHT command sent to device", housecode + std::to_string(anumber));
}

Task<void> DeviceCommands::turnoff(std::string housecode, int anumber) {
  const Sending sending(*this);
  co_await send(housecode, anumber, kX10Off, 20);
  report("Turned OFF device", housecode + std::to_string(anumber));
  co_await module1_.pause(1);
  carried_out(housecode, anumber, kX10Off);
}

Task<void> DeviceCommands::send(std::string housecode, int anumber, int function, double amount) {
  const std::string unit = std::to_string(anumber);
  co_await interface_.SendX10(housecode, unit, function, amount, 20, 50);
}

void DeviceCommands::report(const std::string& what, const std::string& address,
                            const std::string& more) {
  form_.Statusbar.panel2 =
      what + " with housecode " + address + more + " at " + hh_mm_ss(loop_.local_time());
}

}  // namespace homewarden
