#include "app/demo/demo_house.h"

#include <array>
#include <string>
#include <system_error>

#include "core/devices.h"
#include "core/settings.h"
#include "platform/linux/lock_file_instance.h"

namespace homewarden {
namespace {

struct DemoDevice {
  const char* room;
  const char* name;
  char house;
  int unit;
  const char* type;
};

constexpr std::array<DemoDevice, 17> kDevices = {{
    {"Living Room", "Ceiling Light", 'A', 1, "bulb"},
    {"Living Room", "Reading Lamp", 'A', 2, "bulb2"},
    {"Living Room", "Table Lamp", 'A', 3, "bulb2"},
    {"Living Room", "Radio", 'A', 4, "radio"},
    {"Living Room", "Ceiling Fan", 'A', 5, "fan"},
    {"Kitchen", "Ceiling Light", 'A', 6, "bulb"},
    {"Kitchen", "Worktop Light", 'A', 7, "bulb"},
    {"Kitchen", "Coffee Maker", 'A', 8, "switch"},
    {"Kitchen", "Radio", 'A', 9, "radio"},
    {"Bedroom", "Bedside Lamp", 'B', 1, "bulb2"},
    {"Bedroom", "Ceiling Light", 'B', 2, "bulb"},
    {"Bedroom", "Fan", 'B', 3, "fan"},
    {"Study", "Desk Lamp", 'B', 4, "bulb2"},
    {"Study", "Printer", 'B', 5, "switch"},
    {"Garden", "Path Lights", 'C', 1, "bulb"},
    {"Garden", "Fountain", 'C', 2, "switch"},
    {"Garden", "Porch Light", 'C', 3, "bulb"},
}};

const char* const kEvents =
    "Garden Porch Light~C~3~100~sSet:00~on~daily~mtwufsr\r\n"
    "Garden Porch Light~C~3~ ~23:30~off~daily~mtwufsr\r\n"
    "Garden Fountain~C~2~100~10:00~on~daily~sr\r\n"
    "Garden Fountain~C~2~ ~sSet:-1~off~daily~sr\r\n"
    "Bedroom Bedside Lamp~B~1~40~06:45~on~daily~mtwuf\r\n"
    "Bedroom Bedside Lamp~B~1~ ~sRise:+1~off~daily~mtwuf\r\n"
    "Kitchen Coffee Maker~A~8~100~06:50~on~daily~mtwuf\r\n"
    "Kitchen Coffee Maker~A~8~ ~07:30~off~daily~mtwuf\r\n";

std::string room_list() {
  std::string list;
  std::string room;
  for (const DemoDevice& device : kDevices) {
    if (room != device.room) list += std::string(device.room) + "~~~\r\n";
    room = device.room;
    list +=
        room + "~" + device.name + "~" + device.house + "~" + std::to_string(device.unit) + "\r\n";
  }
  return list;
}

}  // namespace

os_linux::Folders demo_folders() {
  const std::filesystem::path demo = os_linux::data_home() / "homewarden-demo";
  return os_linux::Folders{demo, demo / "machine", demo / "user"};
}

void remove_demo(const os_linux::Folders& folders) {
  for (const char* lock : {os_linux::kWindowLock, os_linux::kServiceLock})
    if (os_linux::LockFileInstance(folders.machine / lock).another_is_running()) return;
  std::error_code ignored;
  std::filesystem::remove_all(folders.application, ignored);
}

void furnish_demo(const os_linux::Folders& folders, Files& files, Registry& registry) {
  std::error_code ignored;
  std::filesystem::create_directories(folders.machine / "ports", ignored);
  const std::filesystem::path list = folders.application / "rmlst.hwd";
  if (files.exists(list)) return;
  Settings settings(registry);
  for (const DemoDevice& device : kDevices)
    settings.write("type", device_key(device.room, device.name), device.type);
  registry.write(RegistryRoot::kLocalMachine, kMachineKey, "port",
                 {RegistryType::kString, std::to_string(kDemoPort)});
  files.write(folders.application / "evelst.hwd", kEvents);
  files.write(list, room_list());
}

emulator::Options demo_modules() {
  emulator::Options options;
  for (const DemoDevice& device : kDevices) {
    const bool dimmable = device_type(device.type).dimmable;
    options.modules.push_back(
        {cm11::Address{device.house - 'A', device.unit},
         dimmable ? emulator::ModuleType::kLamp : emulator::ModuleType::kAppliance,
         std::string(device.room) + " " + device.name});
  }
  return options;
}

}  // namespace homewarden
