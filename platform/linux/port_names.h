#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace homewarden::os_linux {

// COM port numbers as serial devices of this machine: the link ports/com<n> in the machine-wide
// folder where there is one; else 1 to 4 are the ports on the board, 5 to 10 USB serial adapters
// and 11 to 15 USB modems.
class PortNames {
 public:
  enum class Devices {
    kAll,
    kLinksOnly,  // no port of the machine itself, so that a demonstration touches none
  };

  PortNames(const std::filesystem::path& machine_folder, Devices devices);

  // The device itself, with links followed, so that one port has one name. Empty when COM port
  // `port` does not exist.
  std::string path(int port) const;

  // The COM ports 1 to 15 that exist, in ascending order.
  std::vector<int> present() const;

 private:
  std::filesystem::path links_;
  Devices devices_;
};

}  // namespace homewarden::os_linux
