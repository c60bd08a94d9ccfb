// The driver on a real serial port: the kernel's pseudo-terminal, with the emulator at its other
// end.
#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <filesystem>
#include <fstream>
#include <memory>

#include "platform/qt/qt_loop.h"
#include "platform/serial/qt_serial_stream.h"
#include "tests/cm11/driver_fixture.h"
#include "tools/emulator/pty_host.h"

namespace homewarden::testing {

namespace {

namespace fs = std::filesystem;
using os_linux::PortNames;
using serial::QtSerialStream;
using namespace std::chrono_literals;

emulator::Options fast() {
  emulator::Options options;
  options.speed = 50;
  return options;
}

class PtyTest : public ::testing::Test {
 protected:
  PtyTest() {
    fs::create_directories(folder / "ports");
    host.FdChanged.connect([this] { watch(); });
    driver.TroubleChanged.connect([this](const std::string& text) { troubles.push_back(text); });
  }
  ~PtyTest() override { fs::remove_all(folder); }

  fs::path link(int port) const { return folder / "ports" / ("com" + std::to_string(port)); }
  void plug(int port) {
    ASSERT_EQ(host.plug(), "");
    fs::create_symlink(host.path(), link(port));
  }
  void unplug(int port) {
    fs::remove(link(port));
    host.unplug();
  }
  void watch() {
    notifier.reset();
    if (host.fd() < 0) return;
    notifier = std::make_unique<QSocketNotifier>(host.fd(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [this] { host_driver.readable(); });
  }

  bool wait_for(const std::function<bool()>& done, std::chrono::milliseconds limit = 15s) {
    const auto end = loop.uptime() + limit;
    while (!done() && loop.uptime() < end) {
      QTimer::singleShot(10, &events, &QEventLoop::quit);
      events.exec();
    }
    return done();
  }
  int finish(Task<int> operation) {
    auto result = std::make_shared<int>(-1);
    operations.start(keep_result(std::move(operation), result));
    wait_for([&] { return *result != -1; });
    return *result;
  }
  int on(const std::string& unit) { return finish(driver.SendX10("A", unit, kX10On, 0, 20, 50)); }
  std::string module(int unit) { return emulator.modules().at({0, unit}).text(); }

  int argc = 1;
  char name[5] = "test";
  char* argv[2] = {name, nullptr};
  QCoreApplication app{argc, argv};
  QEventLoop events;
  qt::QtLoop loop;
  fs::path folder = fs::temp_directory_path() /
                    ("cm11_pty_" + std::to_string(QCoreApplication::applicationPid()));
  emulator::Emulator emulator{fast()};
  emulator::PtyHost host{emulator};
  emulator::PtyHostDriver host_driver{loop, host};
  std::unique_ptr<QSocketNotifier> notifier;
  QtSerialStream stream{PortNames(folder, PortNames::Devices::kLinksOnly)};
  cm11::Driver driver{loop, stream};
  std::vector<std::string> troubles;
  Operations operations{[](std::exception_ptr error) { std::rethrow_exception(error); }};
};

}  // namespace

// Catches: a port that another program can open too, a lost port that is not noticed or never found
// again, bytes that a real terminal changes on their way.
TEST_F(PtyTest, SwitchesUnplugsAndFindsAgain) {
  driver.PortNumber(2);
  EXPECT_EQ(finish(driver.OpenInterface()), 1);
  plug(2);
  ASSERT_EQ(finish(driver.OpenInterface()), 0);
  EXPECT_EQ(on("3"), 0);
  EXPECT_EQ(module(3), "on 100 %");
  for (int unit = 1; unit <= 16; ++unit) EXPECT_EQ(on(std::to_string(unit)), 0);

  QtSerialStream other{PortNames(folder, PortNames::Devices::kLinksOnly)};
  EXPECT_FALSE(other.open(2)) << "in use";

  unplug(2);
  ASSERT_TRUE(wait_for([&] { return !troubles.empty(); }));
  EXPECT_EQ(troubles.back(), "STATUS: Interface unplugged, looking for it");
  plug(6);
  EXPECT_EQ(on("4"), 0);
  EXPECT_EQ(module(4), "on 100 %");
  EXPECT_EQ(troubles.back(), "");
  EXPECT_EQ(stream.present_ports(), (std::vector{6}));
}

// Catches: a file or a dead link taken for a port, a number that means another device.
TEST_F(PtyTest, PortNumbersAreNames) {
  const PortNames names(folder, PortNames::Devices::kLinksOnly);
  EXPECT_EQ(names.path(1), "");
  EXPECT_EQ(names.path(16), "");
  fs::create_symlink(folder / "gone", link(4));
  EXPECT_TRUE(names.present().empty());
  EXPECT_FALSE(stream.open(4));
  std::ofstream(link(5)) << "no port";
  EXPECT_FALSE(stream.open(5));
  plug(7);
  EXPECT_EQ(names.path(7), host.path());

  const PortNames all(folder, PortNames::Devices::kAll);
  EXPECT_EQ(all.path(4), "") << "a link that leads nowhere is not looked for elsewhere";
  for (const int port : {1, 2, 3})
    EXPECT_TRUE(all.path(port).empty() || all.path(port) == "/dev/ttyS" + std::to_string(port - 1));
}

}  // namespace homewarden::testing
