#include "platform/systemd/user_services.h"

#include <pwd.h>
#include <unistd.h>

#include <system_error>
#include <utility>

#include "platform/qt/text_codec.h"
#include "platform/systemd/service_unit.h"

namespace homewarden::systemd {
namespace {

namespace fs = std::filesystem;

const char* const kServiceName = "Wardengine";
constexpr int kLongestReason = 200;

const QString kNotRead =
    QStringLiteral("The service manager did not take over the change of the service: %1");

bool is_ours(const std::string& machine, const std::string& service) {
  return machine.empty() && service == kServiceName;
}

QString user_name() {
  const passwd* entry = getpwuid(getuid());
  return entry ? QString::fromLocal8Bit(entry->pw_name) : QString::number(getuid());
}

QString will_end() {
  return "The service will end when you log out, because the system did not let it stay (%1). To "
         "put that right, run: sudo loginctl enable-linger " +
         user_name();
}

QString stays_lingering() {
  return "Your services still go on when you log out, because that could not be switched off (%1). "
         "To put that right, run: sudo loginctl disable-linger " +
         user_name();
}

// The manager's words as part of a sentence.
QString reason_in(const QString& error) {
  QString reason = error.simplified().left(kLongestReason);
  while (reason.endsWith('.')) reason.chop(1);
  return reason;
}

QString shown(const fs::path& file) {
  return QString::fromStdString(file.string());
}

bool is_utf8(const std::string& text) {
  return QString::fromStdString(text).toStdString() == text;
}

}  // namespace

UserServices::UserServices(const os_linux::ServiceCommand& command, const fs::path& config_home)
    : program_(command.program),
      unit_file_(config_home / "systemd" / "user" / kUnitName),
      unit_(service_unit(command)),
      lingering_(files_, config_home / "homewarden" / "lingering") {}

ServiceState UserServices::query(const std::string& machine, const std::string& service) {
  return is_ours(machine, service) ? manager_.state() : ServiceState::kUnknown;
}

void UserServices::start(const std::string& machine, const std::string& service) {
  if (!is_ours(machine, service)) return;
  renew_unit();
  manager_.start_unit([this](const QString& error) {
    if (!error.isEmpty()) report("The service could not be started: " + reason_in(error) + ".");
  });
}

void UserServices::stop(const std::string& machine, const std::string& service) {
  if (is_ours(machine, service)) manager_.stop_unit();
}

// Where it cannot be written, the service of before is better than none.
void UserServices::renew_unit() {
  const auto content = files_.read(unit_file_);
  if (content && *content != unit_ && write_unit()) manager_.reload([](const QString&) {});
}

bool UserServices::is_available() const {
  return ::access(program_.c_str(), X_OK) == 0;
}

void UserServices::install() {
  ++call_;
  if (!is_utf8(unit_))
    return report("The service cannot be installed, because the name of a folder is not in UTF-8.");
  if (!write_unit())
    return report("The service could not be installed: " + shown(unit_file_) +
                  " cannot be written.");
  const auto linger = [this] { lingering_.switch_on(after(will_end(), [this] { report({}); })); };
  const auto reload = [this, linger] { manager_.reload(after(kNotRead, linger)); };
  manager_.enable(shown(unit_file_),
                  after("The service will not start with the computer: %1", reload));
}

// Of a unit that is not there the manager takes away what is left of it, or refuses.
void UserServices::remove() {
  ++call_;
  const bool is_there = files_.exists(unit_file_);
  const auto no_linger = [this] {
    lingering_.switch_off(after(stays_lingering(), [this] { report({}); }));
  };
  const auto reload = [this, no_linger] {
    if (!files_.remove(unit_file_))
      return report("The service could not be removed: " + shown(unit_file_) +
                    " cannot be deleted.");
    manager_.reload(after(kNotRead, no_linger));
  };
  const auto disabled = after("The service could not be removed: %1", reload);
  manager_.disable(
      [disabled, is_there](const QString& error) { disabled(is_there ? error : QString()); });
}

UserManager::Done UserServices::after(const QString& failure, std::function<void()> next) {
  return [this, call = call_, failure, next = std::move(next)](const QString& error) {
    if (call != call_) return;
    if (error.isEmpty()) return next();
    report(failure.arg(reason_in(error)));
  };
}

void UserServices::report(const QString& text) {
  reported(qt::to_code_page(text));
}

bool UserServices::write_unit() {
  if (!is_utf8(unit_)) return false;
  std::error_code ignored;
  fs::create_directories(unit_file_.parent_path(), ignored);
  fs::path scratch = unit_file_;
  scratch += ".new";
  return files_.write(scratch, unit_) && files_.rename(scratch, unit_file_);
}

}  // namespace homewarden::systemd
