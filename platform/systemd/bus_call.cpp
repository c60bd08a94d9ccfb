#include "platform/systemd/bus_call.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <utility>

namespace homewarden::systemd {

QDBusMessage bus_call(const QString& service, const QString& path, const QString& interface,
                      const QString& method) {
  QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
  call.setAutoStartService(false);
  return call;
}

void send(QDBusConnection bus, const QDBusMessage& call, int patience, QObject& context,
          std::function<void(const BusAnswer&)> done) {
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, patience), &context);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context,
                   [watcher, done = std::move(done)] {
                     watcher->deleteLater();
                     QString error;
                     if (watcher->isError()) {
                       error = watcher->error().message();
                       if (error.isEmpty()) error = watcher->error().name();
                     }
                     done({error, watcher->reply()});
                   });
}

}  // namespace homewarden::systemd
