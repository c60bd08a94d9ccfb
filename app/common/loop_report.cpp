#include "app/common/loop_report.h"

#include <time.h>

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "app/common/standard_output.h"

namespace homewarden {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::chrono::milliseconds kBeat{2};

Milliseconds read(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// The signals of the event dispatcher would not do: they do not enclose what the loop dispatches.
class LoopReport : public QObject {
 public:
  explicit LoopReport(QObject* owner) : QObject(owner) {
    connect(&beat_, &QTimer::timeout, this, [this] { count(); });
    connect(&second_, &QTimer::timeout, this, [this] {
      char line[80];
      std::snprintf(line, sizeof line, "loop %.1f ms late, %.1f ms busy", late_.count(),
                    busy_.count());
      standard_output().print(line);
      late_ = busy_ = {};
    });
    beat_.setTimerType(Qt::PreciseTimer);
    beat_.start(kBeat);
    second_.start(std::chrono::seconds(1));
  }

 private:
  void count() {
    const Milliseconds now = read(CLOCK_MONOTONIC);
    const Milliseconds used = read(CLOCK_THREAD_CPUTIME_ID);
    const Milliseconds late = now - last_beat_ - kBeat;
    late_ = std::max(late_, late);
    busy_ = std::max(busy_, std::min(late, used - last_used_));
    last_beat_ = now;
    last_used_ = used;
  }

  QTimer beat_;
  QTimer second_;
  Milliseconds last_beat_ = read(CLOCK_MONOTONIC);
  Milliseconds last_used_ = read(CLOCK_THREAD_CPUTIME_ID);
  Milliseconds late_{};
  Milliseconds busy_{};
};

}  // namespace

void report_loop_turns() {
  new LoopReport(QCoreApplication::instance());
}

}  // namespace homewarden
