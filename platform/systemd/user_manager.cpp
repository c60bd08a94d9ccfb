#include "platform/systemd/user_manager.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QFile>
#include <QStringList>
#include <utility>

#include "platform/systemd/bus_call.h"
#include "platform/systemd/service_unit.h"
#include "platform/systemd/unit_state.h"

namespace homewarden::systemd {
namespace {

const QString kBus = QStringLiteral("org.freedesktop.DBus");
const QString kManager = QStringLiteral("org.freedesktop.systemd1");

constexpr int kPatience = 500;        // milliseconds: the window waits meanwhile
constexpr int kLongPatience = 30000;  // milliseconds: nobody waits

QDBusMessage bus_question(const QString& method) {
  return bus_call(kBus, QStringLiteral("/org/freedesktop/DBus"), kBus, method);
}

QDBusMessage manager_call(const QString& method) {
  return bus_call(kManager, QStringLiteral("/org/freedesktop/systemd1"),
                  QStringLiteral("org.freedesktop.systemd1.Manager"), method);
}

bool is_silence(const QDBusMessage& answer) {
  const auto error = QDBusError(answer).type();
  return error == QDBusError::NoReply || error == QDBusError::Timeout ||
         error == QDBusError::TimedOut;
}

// The manager answers with the unit's name, description, load state, active state, sub state, what
// it follows, its path, and the number, kind and path of the job that waits for it.
UnitState unit_state(const QDBusMessage& answer) {
  UnitState unit;
  if (answer.signature() != QLatin1String("a(ssssssouso)")) return unit;
  const auto units = answer.arguments().value(0).value<QDBusArgument>();
  units.beginArray();
  if (units.atEnd()) return unit;
  QString unused;
  QDBusObjectPath path;
  uint number = 0;
  units.beginStructure();
  units >> unused >> unused >> unit.load >> unit.active >> unused >> unused >> path >> number >>
      unit.job;
  return unit;
}

// Looking for a bus where there is none might start one.
bool has_bus() {
  if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return true;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return !folder.isEmpty() && QFile::exists(folder + "/bus");
}

}  // namespace

UserManager::UserManager() : bus_(QDBusConnection::sessionBus()) {}

bool UserManager::is_there() {
  if (!has_bus()) return false;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return false;
  QDBusMessage question = bus_question("NameHasOwner");
  question << kManager;
  const QDBusMessage answer = bus.call(question, QDBus::Block, kPatience);
  return answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toBool();
}

ServiceState UserManager::state() {
  if (is_silent_) return ServiceState::kUnknown;
  QDBusMessage question = manager_call("ListUnitsByNames");
  question << QStringList{kUnitName};
  const QDBusMessage answer = bus_.call(question, QDBus::Block, kPatience);
  if (answer.type() == QDBusMessage::ReplyMessage) return service_state(unit_state(answer));
  if (is_silence(answer)) wait_for_sign();
  return ServiceState::kUnknown;
}

void UserManager::wait_for_sign() {
  is_silent_ = true;
  const QDBusMessage question = bus_call(kManager, QStringLiteral("/org/freedesktop/systemd1"),
                                         QStringLiteral("org.freedesktop.DBus.Peer"), "Ping");
  send(bus_, question, kLongPatience, context_, [this](const BusAnswer&) { is_silent_ = false; });
}

void UserManager::start_unit(Done done) {
  QDBusMessage call = manager_call("StartUnit");
  call << QString(kUnitName) << QStringLiteral("replace");
  ask(call, std::move(done));
}

void UserManager::stop_unit() {
  QDBusMessage call = manager_call("StopUnit");
  call << QString(kUnitName) << QStringLiteral("replace");
  ask(call, [](const QString&) {});
}

// With the file's path, because the manager may look for units in other folders than this program.
void UserManager::enable(const QString& unit_file, Done done) {
  QDBusMessage call = manager_call("EnableUnitFiles");
  call << QStringList{unit_file} << false /*for this boot alone*/ << true /*over other links*/;
  ask(call, std::move(done));
}

void UserManager::disable(Done done) {
  QDBusMessage call = manager_call("DisableUnitFiles");
  call << QStringList{kUnitName} << false /*for this boot alone*/;
  ask(call, std::move(done));
}

void UserManager::reload(Done done) {
  ask(manager_call("Reload"), std::move(done));
}

void UserManager::ask(const QDBusMessage& call, Done done) {
  send(bus_, call, kLongPatience, context_,
       [done = std::move(done)](const BusAnswer& answer) { done(answer.error); });
}

}  // namespace homewarden::systemd
