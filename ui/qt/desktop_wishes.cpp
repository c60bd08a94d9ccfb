#include "ui/qt/desktop_wishes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace homewarden::view {
namespace {

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kAppearance = "org.freedesktop.appearance";
constexpr const char* kColours = "color-scheme";  // 0 does not mind, 1 dark, 2 light
constexpr const char* kContrast = "contrast";     // 0 does not mind, 1 more
constexpr const char* kInterfaceSettings = "org.gnome.desktop.interface";
constexpr const char* kAnimations = "enable-animations";

// A value may be wrapped twice.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

DesktopWishes::DesktopWishes() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.connect(kService, kPath, kInterface, "SettingChanged", this,
              SLOT(setting_changed(QString, QString, QDBusVariant)));
  ask(kAppearance, kColours);
  ask(kAppearance, kContrast);
  ask(kInterfaceSettings, kAnimations);
}

void DesktopWishes::ask(const QString& space, const QString& key) {
  QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Read");
  call << space << key;
  auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, space, key, watcher] {
    watcher->deleteLater();
    const QDBusPendingReply<QDBusVariant> reply = *watcher;
    if (!reply.isError()) take(space, key, unwrapped(reply.value().variant()));
  });
}

void DesktopWishes::setting_changed(const QString& space, const QString& key,
                                    const QDBusVariant& value) {
  take(space, key, unwrapped(value.variant()));
}

void DesktopWishes::take(const QString& space, const QString& key, const QVariant& value) {
  if (space == kAppearance && key == kColours) {
    const uint wish = value.toUInt();
    dark_ = wish == 1 ? std::optional(true) : wish == 2 ? std::optional(false) : std::nullopt;
  } else if (space == kAppearance && key == kContrast) {
    high_contrast_ = value.toUInt() == 1;
  } else if (space == kInterfaceSettings && key == kAnimations) {
    less_motion_ = !value.toBool();
  } else {
    return;
  }
  emit changed();
}

}  // namespace homewarden::view
