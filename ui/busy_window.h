#pragma once

#include "ui/controls.h"

namespace homewarden {

// The window takes no input, and shows it, as long as any of these lives.
class BusyWindow {
 public:
  explicit BusyWindow(Window& form) : form_(form) {
    ++form_.busy;
    form_.enabled = false;
    form_.mouse_pointer = MousePointer::kHourglass;
  }
  BusyWindow(const BusyWindow&) = delete;
  BusyWindow& operator=(const BusyWindow&) = delete;
  ~BusyWindow() {
    if (--form_.busy > 0) return;
    form_.mouse_pointer = MousePointer::kNormal;
    form_.enabled = true;
  }

 private:
  Window& form_;
};

}  // namespace homewarden
