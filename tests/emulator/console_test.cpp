#include <cstdio>
#include <fstream>

#include "tests/emulator/serial_port.h"
#include "tools/emulator/tool_options.h"

namespace homewarden::emulator {
namespace {

using Lines = std::vector<std::string>;

TEST(Console, RemoteSwitchesAndReports) {
  Options options = instant();
  options.modules = parse_house(
      "Kitchen~~~\r\nKitchen~Table Lamp~A~3\r\n\r\nHall~Fan~b~16\r\nnonsense\r\nX~Y~Q~1\r\n"
      "X~Y~A~17\r\n");
  ASSERT_EQ(options.modules.size(), 2U);
  options.modules[1].type = ModuleType::kAppliance;
  SerialPort port(options);
  port.play("remote A3 on|  remote  a3   dim 9 |remote B16 on|remote A9 on|remote C hail");
  EXPECT_EQ(
      port.house.take_reports(),
      (Lines{"A3 On: on 100 % (remote)", "A3 Dim 9/22: on 59 % (remote)", "B16 On: on (remote)",
             "A9 On: no module (remote)", "C Hail Request: no module listens (remote)"}));
  EXPECT_EQ(port.console("show"),
            "A3 lamp (Kitchen, Table Lamp): on 59 %\nB16 appliance (Hall, Fan): on");
  EXPECT_EQ(port.console("show b"), "B16 appliance (Hall, Fan): on");
  EXPECT_EQ(port.console("show A4"), "nothing is on");
}

// A line with a slip in it must not switch something else, nor pass in silence.
TEST(Console, LinesThatMakeNoSenseChangeNothing) {
  SerialPort port(instant());
  std::istringstream lines(
      "remote|remote A|remote Q1 on|remote A17 on|remote A1 blink|remote A1 dim|remote A1 dim 0|"
      "remote A1 dim 23|remote A1 dim x|remote A1 on 5|remote A1 extended 3F|"
      "remote A1 extended 3F 100|remote A extended 1 2|fault|fault nothing|fault noise -1|"
      "fault noise 0|fault noise 1.5|fault all 3|fault noise 1 2|show Z|quit now|dance");
  for (std::string line; std::getline(lines, line, '|');) {
    EXPECT_NE(port.console(line), "") << line;
    EXPECT_EQ(port.house.take_host_request(), std::nullopt) << line;
  }
  EXPECT_TRUE(port.house.frames().empty());
  for (int i = 0; i < kFaultCount; ++i) {
    EXPECT_EQ(port.house.faults().pending(fault_at(i)), 0);
    EXPECT_EQ(port.house.faults().probability(fault_at(i)), 0);
  }
}

TEST(Console, FaultsByNameCountAndProbability) {
  SerialPort port(instant());
  port.play("fault noise 3 | fault collision | fault late-ready 0.25");
  const std::string list = port.console("fault list");
  for (const char* const entry :
       {"to come 3, probability 0", "to come 1, probability 0", "to come 0, probability 0.25"})
    EXPECT_NE(list.find(entry), std::string::npos) << list;
  port.play("fault off");
  EXPECT_EQ(port.house.faults().pending(Fault::kNoise), 0);
  EXPECT_EQ(port.house.faults().probability(Fault::kLateReady), 0);
}

TEST(ToolOptions, CommandLine) {
  const std::string house = ::testing::TempDir() + "emulator_house.hwd";
  std::ofstream(house) << "Kitchen~Lamp~A~3\r\n";
  const auto options = parse_tool_options({"--appliance", "A3", "--mains", "50", "--speed", "2.5",
                                           "--house", house, "--link", "/x/com1", "--seed", "9",
                                           "--fault", "noise=0.5", "--trace", "--keep"});
  std::remove(house.c_str());
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.emulator.mains_hertz, 50);
  EXPECT_EQ(options.emulator.speed, 2.5);
  EXPECT_EQ(options.emulator.seed, 9U);
  EXPECT_EQ(options.link, "/x/com1");
  EXPECT_EQ(options.faults, Lines{"noise 0.5"});
  EXPECT_TRUE(options.trace && options.keep);
  const Modules modules(options.emulator.modules);
  EXPECT_EQ(modules.at({0, 3}).type, ModuleType::kAppliance) << "named types count over the file";
  EXPECT_EQ(modules.at({0, 3}).name, "Kitchen, Lamp");
  for (const Lines& wrong :
       {Lines{"--mains", "55"}, Lines{"--speed", "-1"}, Lines{"--speed", "nan"},
        Lines{"--lamp", "Z1"}, Lines{"--seed", "x"}, Lines{"--link"},
        Lines{"--house", "/nowhere/at/all"}, Lines{"--blue", "1"}, Lines{"-x"}})
    EXPECT_NE(parse_tool_options(wrong).error, "") << wrong.front();
}

}  // namespace
}  // namespace homewarden::emulator
