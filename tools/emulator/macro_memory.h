#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace homewarden::emulator {

// The memory of the interface for timers and macros. It is kept and shown; nothing in it runs.
class MacroMemory {
 public:
  static constexpr std::size_t kSize = 1024;
  static constexpr std::size_t kBlock = 16;

  // Two bytes of address and a block of data, as they follow FB. The address is taken with either
  // byte first: published texts differ, and no address that is possible reads as another one.
  // Nothing is kept when no block begins there. Returns which of it happened, in words.
  std::string write(std::string_view address_and_data);

  // A line for each block in hexadecimal, its address in front; a "*" for those that are the same
  // as the one before. One sentence while nothing has been written.
  std::string text() const;

 private:
  std::array<std::uint8_t, kSize> bytes_ = [] {
    std::array<std::uint8_t, kSize> bytes{};
    bytes.fill(0xFF);
    return bytes;
  }();
  bool written_ = false;
};

}  // namespace homewarden::emulator
