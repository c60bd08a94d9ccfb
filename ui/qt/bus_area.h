#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QTimer>
#include <functional>

namespace homewarden::view {

// The notification area of desktops whose panel takes icons over the session bus, as most do; on
// Wayland there is no other kind.
class BusArea : public QObject {
 public:
  // `came` is called, from the loop, when an area may have come.
  explicit BusArea(std::function<void()> came);

  // Whether an area is there, asked for anew. False also without a bus, and when the panel does
  // not answer within 0.3 seconds, for which the call waits.
  bool is_there() const;

 private:
  QDBusConnection bus_;
  QDBusServiceWatcher panel_;
  QTimer came_;
};

}  // namespace homewarden::view
