#include "app/demo/demo_line.h"

#include <string>

#include "app/demo/demo_house.h"

namespace homewarden {

DemoLine::DemoLine(qt::QtLoop& loop, const std::filesystem::path& machine,
                   os_linux::LineOutput& output)
    : output_(output),
      emulator_(demo_modules()),
      host_(emulator_, (machine / "ports" / ("com" + std::to_string(kDemoPort))).string()),
      driver_(loop, host_) {
  driver_.Worked.connect([this] { print_reports(); });
  const std::string problem = host_.plug();
  if (!problem.empty()) output_.print("The demo has no interface: " + problem);
  if (host_.fd() >= 0) loop.watch_readable(host_.fd(), [this] { driver_.readable(); });
}

void DemoLine::print_reports() {
  for (const std::string& line : emulator_.take_reports())
    output_.print("On the power line: " + line);
}

}  // namespace homewarden
