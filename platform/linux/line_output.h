#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"

namespace homewarden::os_linux {

// To be called first in main. Writing to a closed pipe becomes a plain error, and standard streams
// that the caller had closed lead to nowhere: the next file opened would get their number, and with
// it what is printed.
void prepare_standard_streams();

// Prints lines to a terminal, pipe, socket or file without ever waiting for whoever reads it: a
// stopped terminal, a pager, a log that is full. What cannot be written yet is kept, up to kRoom
// bytes; lines beyond are left out, and "(37 lines left out)" stands in their place. A reader that
// has gone is no error: nothing is printed any more.
class LineOutput {
 public:
  static constexpr std::size_t kRoom = 65536;

  // The descriptor stays the caller's. Other processes that share it are not affected.
  explicit LineOutput(int descriptor);

  // One line or several; the break behind the last one is added.
  void print(std::string_view text);

  // Goes on with what is kept. True when nothing is left to print.
  bool go_on();

  // Called when something begins to be kept. Until go_on() is true, it is to be called from time to
  // time; print() goes on as well.
  std::function<void()> on_kept;

 private:
  enum class Kind { kOwn, kSocket, kShared, kFile };

  std::size_t write_some(std::string_view bytes);

  Descriptor own_;
  int descriptor_;
  Kind kind_ = Kind::kFile;
  bool reader_gone_ = false;
  std::string kept_;
  std::size_t left_out_ = 0;  // lines, since what is kept
};

}  // namespace homewarden::os_linux
