#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <functional>

namespace homewarden::systemd {

// What an asynchronous call came to. `error` is empty when it went well, else what the other side
// or the bus says about it.
struct BusAnswer {
  QString error;
  QDBusMessage message;
};

// Nobody is started for the sake of the call: where a manager can be started, it runs already.
QDBusMessage bus_call(const QString& service, const QString& path, const QString& interface,
                      const QString& method);

// Sends the call and calls the function from the event loop when it has been answered, refused, or
// not answered for as long as given, in milliseconds; never when `context` has gone before.
void send(QDBusConnection bus, const QDBusMessage& call, int patience, QObject& context,
          std::function<void(const BusAnswer&)> done);

}  // namespace homewarden::systemd
