// The whole program on requests that anybody may send: every line is a query, its first letter
// chooses the page.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/lines.h"
#include "core/settings.h"
#include "tests/fuzz/fuzz_house.h"

namespace {

using namespace homewarden;
using namespace homewarden::testing;
using namespace std::chrono_literals;

constexpr std::array<const char*, 5> kPages{"index.html", "wmcindex.html", "", "x/index.html",
                                            "switchon.gif"};
constexpr std::size_t kLargestPage = 100'000;

void check(bool holds) {
  if (!holds) std::abort();
}

std::string machine(FuzzHouse& house, const char* name) {
  const auto value = house.registry.read(RegistryRoot::kLocalMachine, kMachineKey, name);
  return value ? value->data : "";
}

void ask(FuzzHouse& house, std::string_view line) {
  const std::string page = kPages[static_cast<unsigned char>(line[0]) % kPages.size()];
  const std::string query(line.substr(1));
  house.web.answers.clear();
  house.interface_control.take_line_log();
  house.web.request(page, query);
  house.loop.advance(10s);
  check(house.web.answers.size() == 1 && house.web.answers[0].size() < kLargestPage);
  // What is let in without a look at where it comes from switches nothing.
  if (!house.web.what_switches(page, query)) check(house.interface_control.take_line_log().empty());
}

void run(std::string_view requests) {
  FuzzHouse house;
  house.files.contents["/house/evelst.hwd"].clear();
  house.files.contents["/house/html/index.html"] = "<room1><room2><room><dev0><dev1><dev9>\r\n";
  house.files.contents["/house/html/wmcindex.html"] =
      "<body MCFocusStart=\"option1\"><url1><room1><room> ID=\"module1\" class=\"imcl1\" "
      "MCFocusable=\"true\"<mrl1><dev0><dev1>\r\n";
  house.program.start();
  house.loop.advance(5s);
  const std::string port = machine(house, "port");
  LineReader reader(requests);
  for (auto line = reader.next(); line; line = reader.next())
    if (!line->empty()) ask(house, *line);
  check(machine(house, "port") == port && machine(house, "webport").empty());
  check(machine(house, "closeengine") == "True");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  run({reinterpret_cast<const char*>(data), size});
  return 0;
}
