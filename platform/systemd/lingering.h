#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <filesystem>
#include <functional>

#include "platform/files.h"

namespace homewarden::systemd {

// Whether the person's services go on while nobody is logged in, which the system's log-in manager
// decides ("lingering").
class Lingering {
 public:
  // `marker` is a file that lies there as long as lingering is on for the service's sake alone.
  Lingering(Files& files, std::filesystem::path marker);

  // With an empty text when it went well, else with the reason. The system may ask the person for
  // a password meanwhile.
  using Done = std::function<void(const QString& error)>;
  void switch_on(Done done);
  // Leaves it on when somebody else had switched it on.
  void switch_off(Done done);

 private:
  void set(bool on, std::function<void(const QString& error)> done);
  bool write_marker();

  Files& files_;
  std::filesystem::path marker_;
  QObject context_;
};

}  // namespace homewarden::systemd
