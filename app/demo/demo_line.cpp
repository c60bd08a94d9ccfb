#include "app/demo/demo_line.h"

#include <cstdio>

#include "app/demo/demo_house.h"

namespace homewarden {

DemoLine::DemoLine(qt::QtLoop& loop, const std::filesystem::path& link)
    : emulator_(demo_modules()), host_(emulator_, link.string()), driver_(loop, host_) {
  driver_.Worked.connect([this] { print_reports(); });
  const std::string problem = host_.plug();
  if (!problem.empty()) std::fprintf(stderr, "The demo has no interface: %s\n", problem.c_str());
  if (host_.fd() >= 0) loop.watch_readable(host_.fd(), [this] { driver_.readable(); });
}

void DemoLine::print_reports() {
  for (const std::string& line : emulator_.take_reports())
    std::printf("On the power line: %s\n", line.c_str());
  std::fflush(stdout);
}

}  // namespace homewarden
