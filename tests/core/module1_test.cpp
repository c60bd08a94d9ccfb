#include "core/module1.h"

#include <gtest/gtest.h>

#include "base/operations.h"
#include "core/settings.h"
#include "tests/platform/fake_desktop.h"
#include "tests/platform/fake_services.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

struct Module1Test : ::testing::Test {
  // How long a pause that begins now lasts.
  std::chrono::milliseconds length_of_pause(int seconds) {
    const auto start = loop.uptime();
    operations.start(module1.pause(seconds));
    EXPECT_TRUE(loop.advance_until([this] { return operations.running() == 0; }, 300s));
    return loop.uptime() - start;
  }

  VirtualLoop loop;
  MemoryRegistry registry;
  FakeServices services;
  Module1 module1{loop, registry, services, ""};
  Operations operations{[](std::exception_ptr) { FAIL(); }};
};

TEST_F(Module1Test, PauseIsCountedFromTheRoundedSecond) {
  loop.set_wall_clock(2023, 6, 21, 12, 0, 0, 0);
  EXPECT_EQ(length_of_pause(5), 5s);
  loop.set_wall_clock(2023, 6, 21, 12, 0, 0, 400);
  EXPECT_EQ(length_of_pause(1), 600ms);
  loop.set_wall_clock(2023, 6, 21, 12, 0, 0, 600);
  EXPECT_EQ(length_of_pause(1), 1400ms);
  loop.set_wall_clock(2023, 6, 21, 12, 0, 0, 500);  // halves to the even second
  EXPECT_EQ(length_of_pause(1), 500ms);
  loop.set_wall_clock(2023, 6, 21, 12, 0, 1, 500);
  EXPECT_EQ(length_of_pause(1), 1500ms);
  EXPECT_LE(length_of_pause(0), 500ms);
}

TEST_F(Module1Test, PauseDoesNotCareWhatTheWallClockDoes) {
  loop.set_wall_clock(2023, 6, 21, 23, 59, 59, 0);
  EXPECT_EQ(length_of_pause(5), 5s);
  for (const int hour : {2, 20}) {  // set back, set forward
    loop.set_wall_clock(2023, 10, 29, 12, 0, 0, 0);
    operations.start(module1.pause(4));
    loop.advance(1s);
    loop.set_wall_clock(2023, 10, 29, hour);
    loop.advance(2999ms);
    EXPECT_EQ(operations.running(), 1u);
    loop.advance(1ms);
    EXPECT_EQ(operations.running(), 0u);
  }
}

TEST_F(Module1Test, ReadsTextsAndNothingElse) {
  const auto root = RegistryRoot::kLocalMachine;
  module1.regwrite(root, kMachineKey, "port", "3");
  EXPECT_EQ(module1.regread(root, kMachineKey, "port", "none"), "3");
  EXPECT_EQ(module1.regread(root, kMachineKey, "webport", "80"), "80");
  EXPECT_EQ(module1.regread(root, kMachineKey, "webport"), "");
  registry.write(root, kMachineKey, "number", {RegistryType::kNumber, "3"});
  EXPECT_EQ(module1.regread(root, kMachineKey, "number", "none"), "none");
  registry.write(root, kMachineKey, "cut", {RegistryType::kString, std::string("ab\0cd", 5)});
  EXPECT_EQ(module1.regread(root, kMachineKey, "cut", "none"), "ab");
}

}  // namespace
}  // namespace homewarden::testing
