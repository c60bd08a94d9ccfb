#pragma once

#include <sys/types.h>

#include <string>

#include "platform/linux/descriptor.h"
#include "platform/linux/service_command.h"

namespace homewarden::os_linux {

// A process that goes with the one that started it, however that ends. What it prints on standard
// error can be read here. For a process with a single thread.
class SupervisedChild {
 public:
  // Starts it with the environment of this process and the command's. Where that fails,
  // has_started() is false, or it ends at once with 127 and a line on standard error.
  explicit SupervisedChild(const ServiceCommand& command);
  SupervisedChild(const SupervisedChild&) = delete;
  SupervisedChild& operator=(const SupervisedChild&) = delete;
  ~SupervisedChild();  // kills it if it still runs

  bool has_started() const { return process_.is_open(); }
  // Readable when it has ended.
  int process() const { return process_.get(); }
  // Readable when it has printed something or closed its standard error; not to be waited with.
  int output() const { return output_.get(); }
  // Nothing more is wanted from output(), which is -1 then.
  void close_output() { output_ = Descriptor(); }

  void send(int signal) const;

  struct End {
    bool well;         // with exit code 0
    std::string text;  // how it ended otherwise, as "signal 9" or "exit code 1"
  };
  // Waits for its end.
  End end();

 private:
  Descriptor process_;
  Descriptor output_;
  pid_t pid_ = -1;
};

}  // namespace homewarden::os_linux
