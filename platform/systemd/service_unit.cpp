#include "platform/systemd/service_unit.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace homewarden::systemd {
namespace {

constexpr std::string_view kHead =
    "# Written by Homewarden, which writes it anew when it differs. To change something, use\n"
    "#   systemctl --user edit wardengine\n"
    "\n"
    "[Unit]\n"
    "Description=Homewarden without its window\n"
    "Documentation=man:wardengine(1)\n"
    "# A house is not given up, however often the service has failed.\n"
    "StartLimitIntervalSec=0\n";

constexpr std::string_view kRunning =
    "# Killed, it is back within ten seconds, and killed it is when it has been stuck for two "
    "minutes.\n"
    "# It ends well when the window has the house.\n"
    "Restart=on-failure\n"
    "RestartSec=3\n"
    "WatchdogSec=120\n"
    "# It may be told to wait 20 seconds, and waits for settings that another program locks.\n"
    "TimeoutStartSec=180\n"
    "# It finishes the command on the line, 32 seconds at most, and writes its settings.\n"
    "TimeoutStopSec=60\n"
    "\n"
    "# All that a person's own manager can enforce everywhere on a program with a serial port: "
    "file\n"
    "# systems of its own need user namespaces, which systems may forbid; devices take the port.\n"
    "NoNewPrivileges=yes\n"
    "LockPersonality=yes\n"
    "MemoryDenyWriteExecute=yes\n"
    "RestrictNamespaces=yes\n"
    "RestrictRealtime=yes\n"
    "RestrictSUIDSGID=yes\n"
    "# Browsers, the journal, and the kernel's lists of addresses and ports.\n"
    "RestrictAddressFamilies=AF_UNIX AF_INET AF_INET6 AF_NETLINK\n"
    "SystemCallArchitectures=native\n"
    "SystemCallFilter=@system-service\n"
    "SystemCallErrorNumber=EPERM\n"
    "\n"
    "[Install]\n"
    "WantedBy=default.target\n";

bool is_control(char byte) {
  return (byte >= 0 && byte < ' ') || byte == '\x7f';
}

// A % begins what the manager fills in.
std::string doubled_percent(std::string_view text) {
  std::string result;
  for (const char byte : text) result.append(byte == '%' ? 2 : 1, byte);
  return result;
}

std::string in_quotes(std::string_view text) {
  std::string result = "\"";
  for (const char byte : doubled_percent(text)) {
    if (byte == '"' || byte == '\\') result += '\\';
    if (is_control(byte)) {
      std::array<char, 5> code{};
      std::snprintf(code.data(), code.size(), "\\x%02x", static_cast<unsigned>(byte));
      result += code.data();
    } else {
      result += byte;
    }
  }
  return result + '"';
}

// The manager refuses quotation marks and the like in the name of what it starts, however they are
// written; a shell takes them and becomes the program.
bool is_refused(std::string_view program) {
  return std::any_of(program.begin(), program.end(), [](char byte) {
    return byte == '"' || byte == '\'' || byte == '\\' || is_control(byte);
  });
}

// The colon keeps each $ as it is.
std::string exec_line(const os_linux::ServiceCommand& command) {
  const std::string program = command.program.string();
  std::string line = "ExecStart=:";
  if (is_refused(program)) line += "/bin/sh -c " + in_quotes(R"(exec "$0" "$@")") + " ";
  line += in_quotes(program);
  for (const std::string& argument : command.arguments) line += " " + in_quotes(argument);
  return line + "\n";
}

// A program that has been removed leaves a unit that does nothing. The condition knows no quotes.
std::string condition(const os_linux::ServiceCommand& command) {
  const std::string program = command.program.string();
  if (std::any_of(program.begin(), program.end(), is_control)) return "";
  return "# After the program has been removed there is nothing to do.\n"
         "ConditionFileIsExecutable=" +
         doubled_percent(program) + "\n";
}

}  // namespace

std::string service_unit(const os_linux::ServiceCommand& command) {
  std::string text(kHead);
  text += condition(command);
  text += "\n[Service]\nType=notify\n" + exec_line(command);
  for (const std::string& variable : command.environment)
    text += "Environment=" + in_quotes(variable) + "\n";
  text += kRunning;
  return text;
}

}  // namespace homewarden::systemd
