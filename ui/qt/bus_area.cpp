#include "ui/qt/bus_area.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>
#include <utility>

namespace homewarden::view {
namespace {

// The desktops' common names for what collects the icons.
const QString kService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kPath = QStringLiteral("/StatusNotifierWatcher");

constexpr int kPatience = 300;  // milliseconds: the window waits meanwhile

// Without a desktop nobody is to be asked; looking for a bus might even start one.
QDBusConnection desktop_bus() {
  const QString platform = QGuiApplication::platformName();
  const bool is_desktop = platform == "xcb" || platform.startsWith("wayland");
  return is_desktop ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}

}  // namespace

BusArea::BusArea(std::function<void()> came) : bus_(desktop_bus()) {
  came_.setSingleShot(true);
  came_.setInterval(0);
  connect(&came_, &QTimer::timeout, this, std::move(came));
  if (!bus_.isConnected()) return;
  // What collects the icons may come first, what shows them later, or both in one.
  panel_.setConnection(bus_);
  panel_.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
  panel_.addWatchedService(kService);
  connect(&panel_, &QDBusServiceWatcher::serviceRegistered, &came_, [this] { came_.start(); });
  bus_.connect(kService, kPath, kService, "StatusNotifierHostRegistered", &came_, SLOT(start()));
}

bool BusArea::is_there() const {
  if (!bus_.isConnected()) return false;
  auto question =
      QDBusMessage::createMethodCall(kService, kPath, "org.freedesktop.DBus.Properties", "Get");
  question << kService << "IsStatusNotifierHostRegistered";
  question.setAutoStartService(false);
  const QDBusMessage answer = bus_.call(question, QDBus::Block, kPatience);
  return answer.type() == QDBusMessage::ReplyMessage &&
         answer.arguments().value(0).value<QDBusVariant>().variant().toBool();
}

}  // namespace homewarden::view
