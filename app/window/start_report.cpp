#include "app/window/start_report.h"

#include <time.h>
#include <unistd.h>

#include <QEvent>
#include <QFile>
#include <QTimer>
#include <cstdio>

#include "app/common/standard_output.h"

namespace homewarden {
namespace {

// Field 22 of the status line: when the process started, in clock ticks since boot. The name in
// field 2 may hold blanks but ends with the last parenthesis.
double seconds_since_start() {
  QFile file("/proc/self/stat");
  if (!file.open(QIODevice::ReadOnly)) return 0;
  const QByteArray line = file.readAll();
  const auto fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
  const double started = fields.value(19).toDouble() / static_cast<double>(sysconf(_SC_CLK_TCK));
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9 - started;
}

long peak_megabytes() {
  QFile file("/proc/self/status");
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n'))
    if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toLong() / 1024;
  return 0;
}

void print_figure(const char* format, double figure) {
  char line[80];
  std::snprintf(line, sizeof line, format, figure);
  standard_output().print(line);
}

class FirstPaint : public QObject {
 public:
  explicit FirstPaint(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && !painted_) {
      painted_ = true;
      // Behind the paint event: the window is on the screen then.
      QTimer::singleShot(0, this,
                         [] { print_figure("first paint %.0f ms", seconds_since_start() * 1000); });
      QTimer::singleShot(3000, this, [] {
        print_figure("peak memory %.0f MB", static_cast<double>(peak_megabytes()));
      });
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  bool painted_ = false;
};

}  // namespace

void report_first_paint(QWidget& window) {
  new FirstPaint(window);
}

}  // namespace homewarden
