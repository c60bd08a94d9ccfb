#include "platform/systemd/lingering.h"

#include <unistd.h>

#include <QDBusConnection>
#include <QDBusVariant>
#include <system_error>
#include <utility>

#include "platform/systemd/bus_call.h"

namespace homewarden::systemd {
namespace {

const QString kLogin = QStringLiteral("org.freedesktop.login1");

constexpr int kPatience = 30000;         // milliseconds
constexpr int kPersonPatience = 600000;  // milliseconds: somebody looks for a password

// Whether it is on for whoever asks.
QDBusMessage question() {
  QDBusMessage call = bus_call(kLogin, QStringLiteral("/org/freedesktop/login1/user/self"),
                               QStringLiteral("org.freedesktop.DBus.Properties"), "Get");
  call << QStringLiteral("org.freedesktop.login1.User") << QStringLiteral("Linger");
  return call;
}

}  // namespace

Lingering::Lingering(Files& files, std::filesystem::path marker)
    : files_(files), marker_(std::move(marker)) {}

void Lingering::switch_on(Done done) {
  const auto look = [this, done = std::move(done)](const BusAnswer& answer) {
    const QVariant value = answer.message.arguments().value(0);
    const bool is_known = answer.error.isEmpty() && value.canConvert<QDBusVariant>();
    const bool is_on = is_known && value.value<QDBusVariant>().variant().toBool();
    if (is_on) return done({});
    // First the marker: what it does not tell will not be undone.
    const bool is_ours = is_known && write_marker();
    set(true, [this, is_ours, done](const QString& error) {
      if (is_ours && !error.isEmpty()) files_.remove(marker_);
      done(error);
    });
  };
  send(QDBusConnection::systemBus(), question(), kPatience, context_, look);
}

void Lingering::switch_off(Done done) {
  if (!files_.exists(marker_)) return done({});
  set(false, [this, done = std::move(done)](const QString& error) {
    if (error.isEmpty()) files_.remove(marker_);
    done(error);
  });
}

void Lingering::set(bool on, Done done) {
  QDBusMessage call = bus_call(kLogin, QStringLiteral("/org/freedesktop/login1"),
                               QStringLiteral("org.freedesktop.login1.Manager"), "SetUserLinger");
  call << static_cast<uint>(getuid()) << on << true /*the person may be asked*/;
  call.setInteractiveAuthorizationAllowed(true);
  send(QDBusConnection::systemBus(), call, kPersonPatience, context_,
       [done = std::move(done)](const BusAnswer& answer) { done(answer.error); });
}

bool Lingering::write_marker() {
  std::error_code ignored;
  std::filesystem::create_directories(marker_.parent_path(), ignored);
  return files_.write(marker_, "Lingering was switched on for wardengine.service.\n");
}

}  // namespace homewarden::systemd
