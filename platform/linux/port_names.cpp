#include "platform/linux/port_names.h"

#include <system_error>

namespace homewarden::os_linux {

namespace {

namespace fs = std::filesystem;

constexpr int kPorts = 15;
constexpr int kFirstUsbPort = 5;
constexpr int kFirstModemPort = 11;

fs::path device(int port) {
  if (port >= kFirstModemPort) return "/dev/ttyACM" + std::to_string(port - kFirstModemPort);
  if (port >= kFirstUsbPort) return "/dev/ttyUSB" + std::to_string(port - kFirstUsbPort);
  return "/dev/ttyS" + std::to_string(port - 1);
}

}  // namespace

PortNames::PortNames(const fs::path& machine_folder, Devices devices)
    : links_(machine_folder / "ports"), devices_(devices) {}

std::string PortNames::path(int port) const {
  if (port < 1 || port > kPorts) return {};
  std::error_code error;
  // A link that leads nowhere is a port that is unplugged, not one to be looked for elsewhere.
  fs::path name = links_ / ("com" + std::to_string(port));
  if (!fs::exists(fs::symlink_status(name, error))) {
    if (devices_ == Devices::kLinksOnly) return {};
    name = device(port);
  }
  const fs::path real = fs::canonical(name, error);
  return error ? std::string() : real.string();
}

std::vector<int> PortNames::present() const {
  std::vector<int> ports;
  for (int port = 1; port <= kPorts; ++port)
    if (!path(port).empty()) ports.push_back(port);
  return ports;
}

}  // namespace homewarden::os_linux
