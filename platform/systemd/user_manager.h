#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>

#include "platform/service_control.h"

namespace homewarden::systemd {

// The person's own service manager on the session bus, asked about our unit alone.
class UserManager {
 public:
  UserManager();
  UserManager(const UserManager&) = delete;
  UserManager& operator=(const UserManager&) = delete;

  // Whether there is one on this session's bus. Waits half a second at most.
  static bool is_there();

  // kUnknown when the unit is not installed, and when there is no answer within half a second.
  // After such a silence it does not wait again until something has been heard, or until half a
  // minute has passed.
  ServiceState state();

  // With an empty text when it went well, else with the manager's words.
  using Done = std::function<void(const QString& error)>;

  // These do not wait. What they ask for is done in the order of asking. Starting is done when the
  // manager has taken the order.
  void start_unit(Done done);
  void stop_unit();
  void enable(const QString& unit_file, Done done);
  void disable(Done done);
  // Has it read its unit files anew.
  void reload(Done done);

 private:
  void wait_for_sign();
  void ask(const QDBusMessage& call, Done done);

  QDBusConnection bus_;
  QObject context_;
  bool is_silent_ = false;
};

}  // namespace homewarden::systemd
