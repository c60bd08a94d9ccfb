#pragma once

#include <string>

namespace homewarden {

// The system's command interpreter.
class Shell {
 public:
  virtual ~Shell() = default;

  // Runs a command line without waiting for it, its window minimised and not activated. False when
  // it could not be begun; what becomes of it afterwards is not told.
  virtual bool run(const std::string& command_line) = 0;
};

}  // namespace homewarden
