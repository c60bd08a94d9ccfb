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
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "base/operations.h"
#include "bench/whole_program.h"
#include "platform/waiting.h"
#include "ui/qt/device_card.h"

namespace homewarden {
namespace {

using namespace std::chrono_literals;
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
    house_.line().on_bytes = [this](bool from_computer, std::string_view, auto) {
      if (from_computer && first_byte_ == Clock::time_point{}) first_byte_ = Clock::now();
    };
    house_.start();
    operations_.start(run());
  }

 private:
  Task<void> run() {
    co_await Delay(house_.loop(), 3s);
    house_.form().Tree.selected = house_.form().Tree.find("Den");
    co_await Delay(house_.loop(), 500ms);
    LoopTurns turns;
    std::vector<double> times;
    std::vector<QWidget*> cards;
    for (QWidget* widget : house_.view().findChildren<QWidget*>())
      if (dynamic_cast<view::DeviceCard*>(widget)) cards.push_back(widget);
    for (int i = 0; i < presses_; ++i) {
      first_byte_ = {};
      const auto pressed = Clock::now();
      QTest::mouseClick(cards.at(static_cast<std::size_t>(i % kDevices)), Qt::LeftButton);
      co_await Delay(house_.loop(), 200ms);
      times.push_back(Milliseconds(first_byte_ - pressed).count());
    }
    print("window", times);
    times.clear();
    co_await Delay(house_.loop(), 2s);
    {
      WebClient client(presses_);
      for (int i = 0; i < presses_; ++i) {
        first_byte_ = {};
        client.press();
        co_await Delay(house_.loop(), 1700ms);  // the answer comes after a pause of a second
        times.push_back(Milliseconds(first_byte_ - client.sent_at()).count());
      }
    }
    print("web", times);
    std::printf("longest turn of the loop: %.1f ms\n", turns.longest);
    house_.loop().quit();
  }

  const int presses_;
  WholeProgram house_{room_list(), kPort, kSpeed};
  Clock::time_point first_byte_;
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
