#pragma once

#include <functional>

namespace homewarden {

// How a copy of the program that is started while another one runs on the same house brings that
// one's window forward.
class WindowCall {
 public:
  virtual ~WindowCall() = default;

  // Asks the running copy to show its window. False when none can be asked: it has no window yet
  // or any more, is another person's, or cannot be reached. True is no promise that it shows.
  virtual bool ask() = 0;

  // `show` is called, from the loop, whenever another copy asks. Where others cannot be heard it
  // never is. A second call replaces the function.
  virtual void listen(std::function<void()> show) = 0;
  // From now on ask() of the others is false. Nothing happens when nobody listens.
  virtual void stop_listening() = 0;
};

}  // namespace homewarden
