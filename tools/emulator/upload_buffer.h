#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "tools/emulator/power_line.h"

namespace homewarden::emulator {

// One answer to C3.
struct Upload {
  std::chrono::milliseconds time{0};
  std::string bytes;     // count, mask and data, as they should have arrived
  bool damaged = false;  // a fault lost, doubled or changed one of them, or put another among them
};

// What the interface has seen on the power line and the computer has not fetched yet.
class UploadBuffer {
 public:
  // Bytes of data in one upload, and all that the interface can keep: what does not fit is lost.
  static constexpr std::size_t kDataBytes = 8;

  // Keeps what a transmission says; false when there was no room and it is lost.
  bool add(const Transmission& heard);

  bool empty() const { return items_.empty(); }

  // Count, mask and data of everything kept, which is forgotten. A function is never parted from
  // its argument bytes; addresses and their function may well come in different uploads.
  std::string take();

 private:
  struct Item {
    std::string bytes;
    bool function = false;
  };

  std::vector<Item> items_;
  std::size_t size_ = 0;
};

}  // namespace homewarden::emulator
