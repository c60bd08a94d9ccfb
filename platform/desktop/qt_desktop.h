#pragma once

#include "platform/desktop.h"

namespace homewarden::desktop {

// The desktop that the person has logged on to.
class QtDesktop : public Desktop {
 public:
  float screen_width() const override;
  float screen_height() const override;
  bool finds_browser() override;
  bool open_address(const std::string& address) override;
  bool start_demo() override;
};

}  // namespace homewarden::desktop
