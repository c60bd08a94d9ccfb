#include "platform/linux/supervised_child.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/linux/pidfd.h"

namespace homewarden::os_linux {
namespace {

constexpr int kNotFound = 127;  // a shell's exit code for a command that cannot be started

[[noreturn]] void become(const ServiceCommand& command, const std::vector<char*>& arguments,
                         pid_t parent, int output) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(kNotFound);  // ended before this was asked for
  ::dup2(output, STDERR_FILENO);
  for (const std::string& setting : command.environment)
    ::putenv(const_cast<char*>(setting.c_str()));
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::execv(command.program.c_str(), arguments.data());
  const std::string text = command.program.string() + ": " + std::strerror(errno) + "\n";
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
  ::_exit(kNotFound);
}

}  // namespace

SupervisedChild::SupervisedChild(const ServiceCommand& command) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return;
  output_ = Descriptor(ends[0]);
  ::fcntl(output_.get(), F_SETFL, O_NONBLOCK);
  const Descriptor input(ends[1]);
  std::string program = command.program.string();
  std::vector<std::string> texts = command.arguments;
  std::vector<char*> arguments{program.data()};
  for (std::string& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);

  const pid_t parent = ::getpid();
  pid_ = ::fork();
  if (pid_ == 0) become(command, arguments, parent, input.get());
  if (pid_ > 0) process_ = open_process(pid_);
  if (pid_ > 0 && !process_.is_open()) {  // as when there are no descriptors left
    ::kill(pid_, SIGKILL);
    end();
  }
}

SupervisedChild::~SupervisedChild() {
  if (pid_ <= 0) return;
  send(SIGKILL);
  end();
}

void SupervisedChild::send(int signal) const {
  send_signal(process_, signal);
}

SupervisedChild::End SupervisedChild::end() {
  int status = 0;
  while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  pid_ = -1;
  if (WIFSIGNALED(status)) return {false, "signal " + std::to_string(WTERMSIG(status))};
  const int code = WEXITSTATUS(status);
  return {code == 0, "exit code " + std::to_string(code)};
}

}  // namespace homewarden::os_linux
