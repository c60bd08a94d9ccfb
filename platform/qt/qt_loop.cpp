#include "platform/qt/qt_loop.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSocketNotifier>
#include <algorithm>

namespace homewarden::qt {

using std::chrono::milliseconds;

QtLoop::QtLoop(TimeLapse lapse) : lapse_(lapse) {
  clock_.start();
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { run_due(); });
}

milliseconds QtLoop::uptime() const {
  if (lapse_.factor == 1) return milliseconds(clock_.elapsed());
  const std::chrono::nanoseconds elapsed(clock_.nsecsElapsed());
  return std::chrono::duration_cast<milliseconds>(elapsed * lapse_.factor);
}

SystemTime QtLoop::system_time() const {
  return SystemTime(lapse_.at(milliseconds(QDateTime::currentMSecsSinceEpoch())));
}

LocalTime QtLoop::local_time() const {
  const auto now = QDateTime::fromMSecsSinceEpoch(system_time().time_since_epoch().count());
  const QDate date = now.date();
  const QTime time = now.time();
  LocalTime local;
  local.year = date.year();
  local.month = date.month();
  local.day = date.day();
  local.hour = time.hour();
  local.minute = time.minute();
  local.second = time.second();
  local.millisecond = time.msec();
  local.weekday = date.dayOfWeek() % 7;
  local.year_day = date.dayOfYear() - 1;
  return local;
}

EventLoop::CallId QtLoop::call_after(milliseconds delay, std::function<void()> function) {
  const CallId id = ++last_id_;
  const milliseconds due = uptime() + std::max(delay, milliseconds(0));
  calls_.emplace(Due{due, id}, std::move(function));
  due_of_.emplace(id, due);
  if (calls_.begin()->first.second == id) arm();
  return id;
}

void QtLoop::cancel(CallId id) {
  const auto found = due_of_.find(id);
  if (found == due_of_.end()) return;
  calls_.erase(Due{found->second, id});
  due_of_.erase(found);
}

// Not QCoreApplication::quit(), which any window that stays open would refuse.
void QtLoop::quit() {
  QCoreApplication::exit(0);
}

void QtLoop::arm() {
  if (calls_.empty()) return timer_.stop();
  milliseconds wait = std::max(calls_.begin()->first.first - uptime(), milliseconds(0));
  if (lapse_.factor != 1) wait = (wait + milliseconds(lapse_.factor - 1)) / lapse_.factor;
  timer_.start(wait);
}

// One call at a time, so that input and painting come in between.
void QtLoop::run_due() {
  if (!calls_.empty() && calls_.begin()->first.first <= uptime()) {
    const auto call = calls_.extract(calls_.begin());
    due_of_.erase(call.key().second);
    arm();  // first: the function may end in a nested dialog of the desktop
    run(call.mapped());
  }
  arm();
}

void QtLoop::run(const std::function<void()>& function) const {
#ifndef NDEBUG
  constexpr milliseconds kLong{20};
  const milliseconds start = uptime();
  function();
  const milliseconds length = uptime() - start;
  if (length > kLong)
    qWarning("the loop was held for %lld ms by one call", static_cast<long long>(length.count()));
#else
  function();
#endif
}

void QtLoop::post(std::function<void()> function) {
  QMetaObject::invokeMethod(&watchers_, std::move(function), Qt::QueuedConnection);
}

void QtLoop::watch_readable(int descriptor, std::function<void()> function) {
  auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, &watchers_);
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, std::move(function));
}

}  // namespace homewarden::qt
