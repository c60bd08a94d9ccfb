#pragma once

#include <string>

namespace homewarden {

// What the desktop around the windows offers.
class Desktop {
 public:
  virtual ~Desktop() = default;

  // The size of the screen that the windows open on, in twips (15 to a pixel at normal size).
  virtual float screen_width() const = 0;
  virtual float screen_height() const = 0;

  // Whether something is there that opens web addresses. True is no promise that it will start.
  virtual bool finds_browser() = 0;

  // Shows the address in the person's browser. False when the browser did not start.
  virtual bool open_address(const std::string& address) = 0;

  // Starts another copy of this program with a house to try things in. False when it did not start.
  virtual bool start_demo() = 0;
};

}  // namespace homewarden
