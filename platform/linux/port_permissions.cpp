#include "platform/linux/port_permissions.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <optional>
#include <vector>

#include "base/code_page.h"

namespace homewarden::os_linux {
namespace {

// The group that would help. Nothing: the port may be opened, or the group may not either.
struct Refusal {
  std::optional<gid_t> group;
};

std::optional<Refusal> refusal(const std::string& path) {
  if (::faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) == 0 || errno != EACCES)
    return std::nullopt;
  struct stat info {};
  constexpr mode_t kGroup = S_IRGRP | S_IWGRP;
  if (::stat(path.c_str(), &info) != 0 || (info.st_mode & kGroup) != kGroup || info.st_gid == 0)
    return Refusal{};
  return Refusal{info.st_gid};
}

std::string user_name() {
  const passwd* const user = ::getpwuid(::geteuid());
  return user ? user->pw_name : std::to_string(::geteuid());
}

// Whether the person was put into the group after logging on.
bool is_in_group_from_next_logon(gid_t group) {
  const passwd* const user = ::getpwuid(::geteuid());
  if (!user) return false;
  int count = 0;
  ::getgrouplist(user->pw_name, user->pw_gid, nullptr, &count);
  std::vector<gid_t> groups(static_cast<std::size_t>(std::max(count, 0)));
  if (::getgrouplist(user->pw_name, user->pw_gid, groups.data(), &count) < 0) return false;
  return std::find(groups.begin(), groups.end(), group) != groups.end();
}

std::string what_helps(const Refusal& refusal) {
  if (!refusal.group) return "; its permissions forbid it.";
  const group* const entry = ::getgrgid(*refusal.group);
  const std::string name = entry ? entry->gr_name : std::to_string(*refusal.group);
  const std::string again = "log off and on, or restart the computer.";
  if (is_in_group_from_next_logon(*refusal.group))
    return ", which belongs to the group " + name +
           ". You are in it from your next logon: " + again;
  return ", which belongs to the group " + name + ". Run \"sudo usermod -aG " + name + " " +
         user_name() + "\", then " + again;
}

}  // namespace

std::string refused_ports(const PortNames& names) {
  std::map<std::string, std::string> ports;  // what helps -> the ports it helps with
  for (const int port : names.present()) {
    const std::string path = names.path(port);
    const auto refused = refusal(path);
    if (!refused) continue;
    std::string& paths = ports[what_helps(*refused)];
    paths += (paths.empty() ? "" : " or ") + path;
  }
  std::string text;
  for (const auto& [help, paths] : ports)
    text += (text.empty() ? "" : " ") + ("You may not open the serial port " + paths + help);
  return from_utf8(text);
}

}  // namespace homewarden::os_linux
