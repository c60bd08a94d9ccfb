#include "ui/qt/app/loop_report.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>

namespace homewarden {
namespace {

// The signals of the event dispatcher would not do: they do not enclose what the loop dispatches.
class LoopReport : public QObject {
 public:
  explicit LoopReport(QObject* owner) : QObject(owner) {
    connect(&beat_, &QTimer::timeout, this, [this] {
      longest_ = std::max(longest_, std::chrono::nanoseconds(since_.nsecsElapsed()) - kBeat);
      since_.start();
    });
    connect(&second_, &QTimer::timeout, this, [this] {
      std::printf("loop %.1f ms\n", std::chrono::duration<double, std::milli>(longest_).count());
      std::fflush(stdout);
      longest_ = {};
    });
    beat_.setTimerType(Qt::PreciseTimer);
    since_.start();
    beat_.start(kBeat);
    second_.start(std::chrono::seconds(1));
  }

 private:
  static constexpr std::chrono::milliseconds kBeat{2};

  QTimer beat_;
  QTimer second_;
  QElapsedTimer since_;
  std::chrono::nanoseconds longest_{};
};

}  // namespace

void report_loop_turns() {
  new LoopReport(QCoreApplication::instance());
}

}  // namespace homewarden
