#pragma once

#include <string>

namespace homewarden {

// The hidden form of the web server: it listens as long as the form is loaded.
struct FrmServer {
  bool loaded = false;
  std::string page;   // the answer that is being built
  bool busy = false;  // a request is being handled; others wait
};

}  // namespace homewarden
