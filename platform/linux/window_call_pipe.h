#pragma once

#include <filesystem>
#include <functional>

#include "platform/linux/descriptor.h"
#include "platform/window_call.h"

namespace homewarden::os_linux {

// Copies call each other through a named pipe, `window.call`. It is the person's own: nobody else
// brings windows onto this desktop. One that a killed copy left has no reader, and is replaced.
class WindowCallPipe : public WindowCall {
 public:
  // Calls the function whenever the descriptor can be read.
  using Watch = std::function<void(int descriptor, std::function<void()> function)>;

  // Copies with the same folder reach each other. `watch` forgets the descriptor before the object
  // goes, or calls nothing any more.
  WindowCallPipe(const std::filesystem::path& folder, Watch watch);
  ~WindowCallPipe() override;
  WindowCallPipe(const WindowCallPipe&) = delete;
  WindowCallPipe& operator=(const WindowCallPipe&) = delete;

  bool ask() override;
  // Only for the copy that runs: the others' calls come here from then on.
  void listen(std::function<void()> show) override;
  void stop_listening() override;

 private:
  void take_calls();

  std::filesystem::path file_;
  Watch watch_;
  Descriptor pipe_;  // open for both ends: it never is at its end when a caller goes
  std::function<void()> show_;
};

}  // namespace homewarden::os_linux
