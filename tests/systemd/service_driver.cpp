// Does what it reads, a word a line, to the service manager on the session bus, and prints what
// came of it and how many milliseconds the call took. Arguments: the folder of settings, the house.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <iostream>
#include <string>

#include "platform/qt/qt_loop.h"
#include "platform/systemd/user_services.h"

namespace homewarden::testing {
namespace {

std::string obey(systemd::UserServices& services, const std::string& word) {
  const std::string name = "Wardengine";
  if (word == "there") return systemd::UserServices::manager_is_there() ? "yes" : "no";
  if (word == "query") return std::to_string(static_cast<int>(services.query("", name)));
  if (word == "install") services.install();
  if (word == "remove") services.remove();
  if (word == "start") services.start("", name);
  if (word == "stop") services.stop("", name);
  if (word == "others") {
    services.start("", "Other");
    services.stop("far", name);
    return std::to_string(static_cast<int>(services.query("far", name)));
  }
  return "done";
}

}  // namespace
}  // namespace homewarden::testing

int main(int argc, char* argv[]) {
  using namespace homewarden;
  QCoreApplication application(argc, argv);
  qt::QtLoop loop;
  systemd::UserServices services(os_linux::service_command(argv[2]), argv[1]);
  services.reported.connect(
      [](const std::string& text) { std::cout << "reported " << text << std::endl; });
  loop.watch_readable(STDIN_FILENO, [&] {
    std::string word;
    char byte = 0;
    while (read(STDIN_FILENO, &byte, 1) == 1 && byte != '\n') word += byte;
    if (word.empty()) return loop.quit();
    QElapsedTimer time;
    time.start();
    const std::string answer = testing::obey(services, word);
    std::cout << answer << ' ' << time.elapsed() << std::endl;
  });
  return QCoreApplication::exec();
}
