// From a press to the first byte on the serial line while the line is idle, from the window and
// from a web client, and the longest turn of the event loop meanwhile. The whole program on a
// pseudo-terminal, with its real store and server, offscreen; the emulated mains runs twenty times
// as fast so that the line is idle again soon.
// usage: press_bench [PRESSES]

#include <netinet/in.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "base/operations.h"
#include "core/program/program.h"
#include "core/settings.h"
#include "platform/cm11/driver.h"
#include "platform/http/http_server.h"
#include "platform/linux/linux_web_host.h"
#include "platform/linux/posix_files.h"
#include "platform/qt/qt_loop.h"
#include "platform/serial/qt_serial_stream.h"
#include "platform/store/sqlite_registry.h"
#include "platform/waiting.h"
#include "tests/platform/fake_desktop.h"
#include "tools/emulator/pty_host.h"
#include "ui/qt/device_card.h"
#include "ui/qt/main_window_view.h"

namespace homewarden {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double kSpeed = 20;
constexpr int kDevices = 10;
constexpr const char* kPort = "18473";

std::string room_list() {
  std::string list = "Den~~~\r\n";
  for (int unit = 1; unit <= kDevices; ++unit)
    list += "Den~Lamp " + std::to_string(unit) + "~A~" + std::to_string(unit) + "\r\n";
  return list;
}

void print(const char* way, std::vector<double>& times) {
  std::sort(times.begin(), times.end());
  const auto at = [&times](double part) {
    return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
  };
  std::printf("%-8s %5zu presses   median %.2f ms   99th percentile %.2f ms   worst %.2f ms\n", way,
              times.size(), at(0.5), at(0.99), times.back());
}

// How long the loop was busy at a stretch, by the processor time of its thread.
class LoopTurns : public QObject {
 public:
  LoopTurns() {
    connect(&beat_, &QTimer::timeout, this, [this] {
      const double now = used();
      longest = std::max(longest, now - last_);
      last_ = now;
    });
    beat_.setTimerType(Qt::PreciseTimer);
    beat_.start(1ms);
  }
  double longest = 0;  // milliseconds

 private:
  static double used() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  }
  QTimer beat_;
  double last_ = used();
};

// Asks for one switch after the other, each when it is told to.
class WebClient {
 public:
  explicit WebClient(int count) : thread_([this, count] { run(count); }) {}
  ~WebClient() { thread_.join(); }

  void press() { wanted_ = true; }
  Clock::time_point sent_at() const { return sent_at_.load(); }

 private:
  void run(int count) {
    const int connection = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(std::atoi(kPort)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) return;
    char answer[65536];
    for (int i = 0; i < count; ++i) {
      while (!wanted_.exchange(false)) std::this_thread::sleep_for(1ms);
      const std::string unit = std::to_string(i % kDevices + 1);
      const std::string request = "GET /index.html?A~" + unit + "~DenLamp" + unit +
                                  "~turnon~Den HTTP/1.1\r\nHost: localhost\r\n\r\n";
      sent_at_ = Clock::now();
      if (write(connection, request.data(), request.size()) < 0) break;
      if (read(connection, answer, sizeof answer) <= 0) break;
    }
    close(connection);
  }

  std::atomic<bool> wanted_{false};
  std::atomic<Clock::time_point> sent_at_{Clock::time_point{}};
  std::thread thread_;
};

class Bench {
 public:
  explicit Bench(int presses) : presses_(presses) {
    fs::create_directories(folder_ / "ports");
    files_.write(folder_ / "rmlst.hwd", room_list());
    const auto set = [this](const char* name, const char* text) {
      registry_.write(RegistryRoot::kLocalMachine, kMachineKey, name,
                      {RegistryType::kString, text});
    };
    set("port", "1");
    set("webport", kPort);
    if (const std::string error = host_.plug(); !error.empty()) std::printf("%s\n", error.c_str());
    readable_ = std::make_unique<QSocketNotifier>(host_.fd(), QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(), [this] {
      if (first_byte_ == Clock::time_point{}) first_byte_ = Clock::now();
      host_driver_.readable();
    });
    view_.show();
    program_.start();
    operations_.start(run());
  }
  ~Bench() { fs::remove_all(folder_); }

 private:
  Task<void> run() {
    co_await Delay(loop_, 3s);
    program_.frm_main.Tree.selected = program_.frm_main.Tree.find("Den");
    co_await Delay(loop_, 500ms);
    LoopTurns turns;
    std::vector<double> times;
    std::vector<QWidget*> cards;
    for (QWidget* widget : view_.findChildren<QWidget*>())
      if (dynamic_cast<view::DeviceButton*>(widget)) cards.push_back(widget);
    for (int i = 0; i < presses_; ++i) {
      first_byte_ = {};
      const auto pressed = Clock::now();
      QTest::mouseClick(cards.at(static_cast<std::size_t>(i % kDevices)), Qt::LeftButton);
      co_await Delay(loop_, 200ms);
      times.push_back(Milliseconds(first_byte_ - pressed).count());
    }
    print("window", times);
    times.clear();
    co_await Delay(loop_, 2s);
    {
      WebClient client(presses_);
      for (int i = 0; i < presses_; ++i) {
        first_byte_ = {};
        client.press();
        co_await Delay(loop_, 1700ms);  // the answer comes after a pause of a second
        times.push_back(Milliseconds(first_byte_ - client.sent_at()).count());
      }
    }
    print("web", times);
    std::printf("longest turn of the loop: %.1f ms\n", turns.longest);
    loop_.quit();
  }

  const int presses_;
  const fs::path folder_ =
      fs::temp_directory_path() / ("press_bench_" + std::to_string(::getpid()));
  qt::QtLoop loop_;
  os_linux::PosixFiles files_;
  store::SqliteRegistry registry_{folder_, folder_};
  emulator::Emulator emulator_{[] {
    emulator::Options options;
    options.speed = kSpeed;
    return options;
  }()};
  emulator::PtyHost host_{emulator_, (folder_ / "ports" / "com1").string()};
  emulator::PtyHostDriver host_driver_{loop_, host_};
  std::unique_ptr<QSocketNotifier> readable_;
  Clock::time_point first_byte_;
  serial::QtSerialStream stream_{
      os_linux::PortNames(folder_, os_linux::PortNames::Devices::kLinksOnly)};
  cm11::Driver driver_{loop_, stream_};
  testing::FakeServices services_;
  testing::FakeInstance instance_;
  testing::FakeDialogs dialogs_{loop_};
  testing::FakeDesktop desktop_;
  testing::FakeSounds sounds_;
  os_linux::LinuxWebHost web_host_;
  http::HttpServer web_{loop_, web_host_,
                        [this](int descriptor, std::function<void()> function) {
                          loop_.watch_readable(descriptor, std::move(function));
                        },
                        [] {
                          http::HttpLimits limits;
                          limits.address = "127.0.0.1";
                          return limits;
                        }()};
  Program program_{{loop_, files_, registry_, services_, instance_, driver_, dialogs_, desktop_,
                    sounds_, web_, folder_, ""},
                   [](std::exception_ptr error) { std::rethrow_exception(error); }};
  view::MainWindowView view_{program_.frm_main};
  Operations operations_{[](std::exception_ptr error) { std::rethrow_exception(error); }};
};

}  // namespace
}  // namespace homewarden

int main(int argc, char* argv[]) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const homewarden::Bench bench(argc > 1 ? std::atoi(argv[1]) : 100);
  return QApplication::exec();
}
