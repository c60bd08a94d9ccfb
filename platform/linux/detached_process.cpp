#include "platform/linux/detached_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

namespace homewarden::os_linux {
namespace {

// The later of two settings of one name holds.
std::vector<std::string> environment_with(const std::vector<std::string>& settings) {
  std::vector<std::string> all;
  for (char** inherited = ::environ; *inherited; ++inherited) {
    const std::string_view text(*inherited);
    const std::string_view name = text.substr(0, text.find('=') + 1);
    if (std::ranges::none_of(settings, [&](const auto& set) { return set.starts_with(name); }))
      all.emplace_back(text);
  }
  all.insert(all.end(), settings.begin(), settings.end());
  return all;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

}  // namespace

std::optional<pid_t> start_detached(const ServiceCommand& command) {
  std::vector<std::string> arguments{command.program.string()};
  arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
  std::vector<std::string> environment = environment_with(command.environment);

  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawn_file_actions_addchdir_np(&files, "/");
  ::posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  for (const int number : {STDOUT_FILENO, STDERR_FILENO})
    ::posix_spawn_file_actions_addopen(&files, number, "/dev/null", O_WRONLY, 0);
  ::posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  sigset_t signals;
  sigemptyset(&signals);
  ::posix_spawnattr_setsigmask(&attributes, &signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGCHLD}) sigaddset(&signals, number);
  ::posix_spawnattr_setsigdefault(&attributes, &signals);
  ::posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

  pid_t process = -1;
  const int error = ::posix_spawn(&process, command.program.c_str(), &files, &attributes,
                                  pointers(arguments).data(), pointers(environment).data());
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&files);
  errno = error;
  if (error != 0) return std::nullopt;
  return process;
}

}  // namespace homewarden::os_linux
