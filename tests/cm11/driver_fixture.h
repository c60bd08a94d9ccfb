#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/operations.h"
#include "platform/cm11/driver.h"
#include "tests/cm11/emulated_port.h"

namespace homewarden::testing {

inline Task<void> keep_result(Task<int> operation, std::shared_ptr<int> result) {
  const int value = co_await operation;
  *result = value;
}

inline Task<void> close_interface(InterfaceControl& interface) {
  const bool closed = co_await interface.CloseInterface();
  EXPECT_TRUE(closed);
}

constexpr int kWaiting = -1;

// A driver, an emulated interface on COM 3, and what came of it.
class DriverTest : public ::testing::Test {
 protected:
  using Milliseconds = std::chrono::milliseconds;
  using Result = std::shared_ptr<int>;

  DriverTest() { rebuild({}); }

  void rebuild(const emulator::Options& options) {
    driver.reset();
    port.reset();
    emulator = std::make_unique<emulator::Emulator>(options);
    port = std::make_unique<EmulatedPort>(loop, *emulator, 3);
    driver = std::make_unique<cm11::Driver>(loop, *port);
    driver->PortNumber(3);
    driver->TroubleChanged.connect([this](const std::string& text) { troubles.push_back(text); });
    driver->CommandReceived.connect([this](const std::string& address, int function) {
      received.push_back(address + " " + std::to_string(function));
    });
  }

  Result start(Task<int> operation) {
    auto result = std::make_shared<int>(kWaiting);
    operations.start(keep_result(std::move(operation), result));
    return result;
  }
  Result send(const cm11::Address& address, int function, double amount = 0) {
    const std::string house(1, static_cast<char>('A' + address.house));
    return start(driver->SendX10(house, std::to_string(address.unit), function, amount, 20, 50));
  }
  Result send(const std::string& address, int function, double amount = 0) {
    return send(*cm11::parse_address(address), function, amount);
  }

  int finish(const Result& result, Milliseconds limit = std::chrono::minutes(2)) {
    loop.advance_until([&] { return *result != kWaiting; }, limit);
    return *result;
  }
  void open() { ASSERT_EQ(finish(start(driver->OpenInterface())), 0); }

  std::string last_trouble() const { return troubles.empty() ? "none" : troubles.back(); }

  void console(const std::string& line) {
    const std::string answer = emulator->command(line, loop.uptime());
    EXPECT_EQ(answer.find("say"), std::string::npos) << answer;
    port->settle();
  }
  std::string module(const std::string& address) {
    return emulator->modules().at(*cm11::parse_address(address)).text();
  }

  VirtualLoop loop;
  std::unique_ptr<emulator::Emulator> emulator;
  std::unique_ptr<EmulatedPort> port;
  std::vector<std::string> troubles;
  std::vector<std::string> received;
  std::unique_ptr<cm11::Driver> driver;
  Operations operations{[](std::exception_ptr error) { std::rethrow_exception(error); }};
};

}  // namespace homewarden::testing
