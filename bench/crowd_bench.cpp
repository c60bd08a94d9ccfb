// What a visitor of the pages, a person at the window and a due event feel of others' switches in
// the browser: while the house is quiet, while one phone has pressed six lamps and left, and while
// eight addresses keep 256 switches waiting each, with 2,000 idle connections and 256 descriptors.
// The whole program on a pseudo-terminal, at the speed of the real mains.
// usage: crowd_bench [SAMPLES]   (from the top folder; 6 window presses and 6 events, 3 minutes)

#include <sys/resource.h>

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "base/operations.h"
#include "bench/whole_program.h"
#include "platform/waiting.h"
#include "ui/qt/device_card.h"

namespace homewarden {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr const char* kPort = "18474";
constexpr int kDevices = 10;
constexpr rlim_t kDescriptors = 256;
constexpr auto kNever = 60s;

std::string room_list() {
  std::string list;
  const auto add = [&list](const std::string& room, char house) {
    list += room + "~~~\r\n";
    for (int unit = 1; unit <= kDevices; ++unit) {
      const std::string number = std::to_string(unit);
      list += room + "~Lamp " + number + "~" + house + "~" + number + "\r\n";
    }
  };
  add("Web", 'A');
  add("Window", 'B');
  add("Event", 'C');
  return list;
}

// One event a minute, from a minute past noon.
std::string event_list() {
  std::string list;
  for (int minute = 1; minute < 60; ++minute) {
    const std::string unit = std::to_string(minute % kDevices + 1);
    list += "Event Lamp " + unit + "~C~" + unit + "~100~12:" + (minute < 10 ? "0" : "") +
            std::to_string(minute) + "~on~daily~mtwufsr\r\n";
  }
  return list;
}

class Bench {
 public:
  explicit Bench(int samples) : samples_(samples) {
    house_.write("evelst.hwd", event_list());
    house_.line().on_bytes = [this](bool from_computer, std::string_view bytes, auto) {
      // A header, then the house code in the upper half of a byte.
      if (!from_computer || bytes.size() != 2 || (bytes[0] & 4) == 0) return;
      const int house = static_cast<unsigned char>(bytes[1]) >> 4;
      if (house == awaited_) awaited_ = 0;
    };
    house_.loop().minutes_past_noon = 0;
    house_.start();
    operations_.start(run());
  }

 private:
  static constexpr int kHouseB = 0xE;
  static constexpr int kHouseC = 0x2;

  Task<void> run() {
    co_await Delay(house_.loop(), 4s);
    house_.form().Tree.selected = house_.form().Tree.find("Window");
    co_await Delay(house_.loop(), 500ms);
    co_await measure("a quiet house", [] {});
    co_await measure("one phone has pressed six lamps", [this] {
      start({"1", "press", "127.0.0.2", "6"});
    });
    start({"3600", "flood", "8", "256", "2000"});
    co_await Delay(house_.loop(), 5s);
    co_await measure("8 addresses flood", [] {});
    for (const auto& client : clients_) {
      client->terminate();
      client->waitForFinished();
    }
    house_.loop().quit();
  }

  // `disturb` is called before the pages and before each press.
  Task<void> measure(std::string what, std::function<void()> disturb) {
    disturb();
    start({"14", "visit", "127.0.0.3", what.c_str()});
    start({"8", "browse", "127.0.0.4", what.c_str()});
    co_await Delay(house_.loop(), 15s);
    std::vector<double> presses;
    std::vector<double> events;
    for (int i = 0; i < samples_; ++i) {
      disturb();
      co_await Delay(house_.loop(), 500ms + 170ms * (i % 7));
      const std::function<void()> press = [this] { press_card(); };
      const std::function<void()> event = [this] { make_event_due(); };
      presses.push_back(co_await time_to_line(press, kHouseB));
      events.push_back(co_await time_to_line(event, kHouseC));
    }
    print("a window press is on the line", what, presses);
    print("a due event is on the line", what, events);
  }

  Task<double> time_to_line(std::function<void()> act, int house) {
    const auto start = Clock::now();
    awaited_ = house;
    act();
    while (awaited_ != 0 && Clock::now() - start < kNever) co_await Delay(house_.loop(), 2ms);
    const std::chrono::duration<double, std::milli> time = Clock::now() - start;
    // Until the line is done with it.
    co_await Delay(house_.loop(), 1500ms);
    ++samples_done_;
    co_return time.count();
  }

  void press_card() {
    std::vector<QWidget*> cards;
    for (QWidget* widget : house_.view().findChildren<QWidget*>())
      if (dynamic_cast<view::DeviceCard*>(widget)) cards.push_back(widget);
    QTest::mouseClick(cards.at(samples_done_ % kDevices), Qt::LeftButton);
  }

  void make_event_due() {
    ++*house_.loop().minutes_past_noon;
    house_.form().eventtimer.tick();
  }

  static void print(const char* name, const std::string& what, std::vector<double>& times) {
    std::sort(times.begin(), times.end());
    std::printf("=> %s, %s: median %.0f ms, worst %.0f ms of %zu\n", name, what.c_str(),
                times[times.size() / 2], times.back(), times.size());
    std::fflush(stdout);
  }

  void start(const QStringList& arguments) {
    auto client = std::make_unique<QProcess>();
    client->setProcessChannelMode(QProcess::ForwardedChannels);
    client->start("bench/crowd.py", QStringList{kPort} + arguments);
    clients_.push_back(std::move(client));
  }

  const int samples_;
  std::size_t samples_done_ = 0;
  int awaited_ = 0;  // the house code that is to come on the line, as sent; 0 once it has
  std::vector<std::unique_ptr<QProcess>> clients_;
  WholeProgram house_{room_list(), kPort, 1};
  Operations operations_{[](std::exception_ptr error) { std::rethrow_exception(error); }};
};

}  // namespace
}  // namespace homewarden

int main(int argc, char* argv[]) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  rlimit descriptors{};
  getrlimit(RLIMIT_NOFILE, &descriptors);
  descriptors.rlim_cur = std::min<rlim_t>(homewarden::kDescriptors, descriptors.rlim_max);
  setrlimit(RLIMIT_NOFILE, &descriptors);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const homewarden::Bench bench(argc > 1 ? std::atoi(argv[1]) : 6);
  return QApplication::exec();
}
