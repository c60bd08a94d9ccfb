#pragma once

#include <microhttpd.h>
#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/web_api.h"

namespace homewarden::http {

// An answer that goes on: what its source has is sent as fast as the reader takes it, and while
// there is nothing the library has nothing to do with the connection.
class Stream {
 public:
  Stream(MHD_Connection* library, std::shared_ptr<StreamSource> source, const Clock& clock);
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  // For the library, with a Stream as `stream`: gives it what is to be sent next, or sets the
  // connection aside.
  static ssize_t read(void* stream, std::uint64_t position, char* to, std::size_t most);

  // Whether it has sent everything there was.
  bool waits() const { return waits_; }
  // Has one that waits ask its source, and go on when there is something.
  void ask();
  // Sends a comment when nothing was sent for so long, so that nobody on the way gives it up.
  void beat(std::chrono::milliseconds interval);
  // Whether the reader has not taken what was sent for so long.
  bool is_stuck(std::chrono::milliseconds limit) const;
  // It ends without what is left, and lets go of its source.
  void give_up();

 private:
  ssize_t read(char* to, std::size_t most);
  void pull();
  void go_on();

  MHD_Connection* const library_;
  const Clock& clock_;
  std::shared_ptr<StreamSource> source_;  // nullptr when it was given up
  std::string text_;                      // the library has not taken it from `taken_` on
  std::size_t taken_ = 0;
  bool waits_ = false;
  std::chrono::milliseconds read_last_;
};

}  // namespace homewarden::http
