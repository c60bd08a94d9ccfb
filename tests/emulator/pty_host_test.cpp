#include "tools/emulator/pty_host.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>

#include "tests/platform/virtual_loop.h"

namespace homewarden::emulator {
namespace {

using std::chrono::milliseconds;

// A program embedding the emulator gives it time from its own loop alone.
class PtyHostTest : public ::testing::Test {
 protected:
  PtyHostTest() {
    host.FdChanged.connect([this] { ++fd_changes; });
    driver.Worked.connect([this] {
      for (const auto& report : house.take_reports()) reports.push_back(report);
    });
    EXPECT_EQ(host.plug(), "");
    client = open(host.path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    EXPECT_GE(client, 0);
  }
  ~PtyHostTest() override { close(client); }

  void send(std::string_view bytes) {
    EXPECT_EQ(write(client, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    driver.readable();
  }

  std::string heard() const {
    std::array<char, 4096> bytes{};
    const ssize_t count = read(client, bytes.data(), bytes.size());
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : "";
  }

  testing::VirtualLoop loop;
  Emulator house;
  PtyHost host{house};
  PtyHostDriver driver{loop, host};
  int client = -1;
  int fd_changes = 0;
  std::vector<std::string> reports;
};

TEST_F(PtyHostTest, RunsOnTheLoopOfAnother) {
  EXPECT_EQ(loop.pending_calls(), 0U);
  send("\x04\x66");
  EXPECT_EQ(heard(), "");
  loop.advance(milliseconds(10));
  EXPECT_EQ(heard(), "\x6A");
  send(std::string_view("\0", 1));
  loop.advance(milliseconds(300));
  EXPECT_EQ(heard(), "");
  loop.advance(milliseconds(100));
  EXPECT_EQ(heard(), "\x55");
  EXPECT_EQ(driver.command("remote A on"), "");
  loop.advance(milliseconds(500));
  EXPECT_EQ(reports, std::vector<std::string>{"A1 On: on 100 % (remote)"});
  EXPECT_EQ(heard(), "\x5A");
  EXPECT_EQ(loop.pending_calls(), 1U) << "one timer, however much has happened";
}

TEST_F(PtyHostTest, UnpluggedIsSeenByBothSides) {
  const std::string path = host.path();
  EXPECT_EQ(driver.command("unplug"), "unplugged");
  EXPECT_EQ(host.fd(), -1);
  driver.command("remote B2 on");
  loop.advance(milliseconds(2000));
  EXPECT_EQ(driver.command("unplug"), "unplug: is unplugged");
  const std::string plugged = driver.command("plug");
  EXPECT_EQ(plugged, "plugged in as " + host.path());
  EXPECT_NE(host.path(), path);
  EXPECT_GE(host.fd(), 0);
  EXPECT_EQ(fd_changes, 3);
  driver.command("quit");
  EXPECT_TRUE(host.quit_wanted());
}

// An hour of polls that nobody read must not come down on the next client.
TEST_F(PtyHostTest, BytesThatNobodyReadsAreLost) {
  driver.command("remote B2 on");
  loop.advance(std::chrono::hours(1));
  const std::string bytes = heard();
  EXPECT_GT(bytes.size(), 0U);
  EXPECT_LT(bytes.size(), 100U);
}

}  // namespace
}  // namespace homewarden::emulator
