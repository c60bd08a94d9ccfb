#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace homewarden::os_linux {

// What a small tool needs that has a loop of its own: time, waiting and reading.

// Time since some fixed moment; never goes back.
std::chrono::milliseconds uptime();

// Waits until one of the descriptors can be read or is at its end, or it is `until` by uptime();
// without `until`, for ever. Returns, for each descriptor, whether it is to be read. Descriptors
// below 0 are never ready.
std::vector<bool> wait_readable(const std::vector<int>& fds,
                                std::optional<std::chrono::milliseconds> until);

// What can be read without waiting from a descriptor that wait_readable() named, at most 1024
// bytes; nothing when it is at its end or broken, "" when it has none after all.
std::optional<std::string> read_some(int fd);

inline constexpr int kStandardInput = 0;

// Turns the signals that ask a program to end (interrupt, terminate, hang-up) into something that
// can be waited for, for as long as it lives; and writing to a closed pipe into a plain error.
class EndSignals {
 public:
  EndSignals();
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  // Readable when such a signal has come; -1 when the system cannot tell.
  int fd() const { return fd_; }

 private:
  int fd_;
};

}  // namespace homewarden::os_linux
