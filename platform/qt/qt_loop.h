#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>
#include <map>
#include <utility>

#include "platform/event_loop.h"
#include "platform/qt/time_lapse.h"

namespace homewarden::qt {

// The event loop of the program on that of Qt: one timer for whatever comes due next.
class QtLoop : public EventLoop {
 public:
  // All times, of both clocks and of calls, are those of the lapse.
  explicit QtLoop(TimeLapse lapse = {});
  QtLoop(const QtLoop&) = delete;
  QtLoop& operator=(const QtLoop&) = delete;

  std::chrono::milliseconds uptime() const override;
  LocalTime local_time() const override;
  SystemTime system_time() const override;
  CallId call_after(std::chrono::milliseconds delay, std::function<void()> function) override;
  void cancel(CallId id) override;
  void quit() override;

  // Calls the function from the loop soon. May be called from any thread, as long as the loop
  // lives.
  void post(std::function<void()> function);

  // Calls the function whenever the descriptor has something to read, as long as the loop lives or
  // until the descriptor is closed.
  void watch_readable(int descriptor, std::function<void()> function);

 private:
  using Due = std::pair<std::chrono::milliseconds, CallId>;

  void arm();
  void run_due();
  void run(const std::function<void()>& function) const;

  const TimeLapse lapse_;
  QElapsedTimer clock_;
  QTimer timer_;
  QObject watchers_;
  CallId last_id_ = 0;
  std::map<Due, std::function<void()>> calls_;
  std::map<CallId, std::chrono::milliseconds> due_of_;
};

}  // namespace homewarden::qt
