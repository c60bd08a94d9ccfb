#include "tools/emulator/macro_memory.h"

#include <algorithm>
#include <cstdio>
#include <span>

namespace homewarden::emulator {

namespace {

std::string label(std::size_t address) {
  char digits[8];
  std::snprintf(digits, sizeof digits, "%03zX", address);
  return digits;
}

std::string in_hexadecimal(std::span<const std::uint8_t> bytes) {
  std::string text;
  char digits[4];
  for (const std::uint8_t byte : bytes) {
    std::snprintf(digits, sizeof digits, " %02X", static_cast<unsigned>(byte));
    text += digits;
  }
  return text;
}

}  // namespace

std::string MacroMemory::write(std::string_view address_and_data) {
  const auto first = static_cast<std::uint8_t>(address_and_data[0]);
  const auto second = static_cast<std::uint8_t>(address_and_data[1]);
  const auto is_low = [](std::uint8_t byte) { return byte % kBlock == 0; };
  const auto is_high = [](std::uint8_t byte) { return byte < kSize / 0x100; };
  std::size_t address = 0;
  if (is_low(first) && is_high(second))
    address = second * 0x100U + first;
  else if (is_high(first) && is_low(second))
    address = first * 0x100U + second;
  else
    return "memory: no block begins at this address, not kept";
  std::ranges::copy(address_and_data.substr(2, kBlock), bytes_.begin() + address);
  written_ = true;
  return "memory: a block at " + label(address);
}

std::string MacroMemory::text() const {
  if (!written_) return "nothing has been written to the memory";
  std::string text;
  std::string before;
  bool left_out = false;
  for (std::size_t address = 0; address < kSize; address += kBlock) {
    const std::string block = in_hexadecimal(std::span(bytes_).subspan(address, kBlock));
    if (block != before) {
      text += (text.empty() ? "" : "\n") + label(address) + ":" + block;
    } else if (!left_out) {
      text += "\n*";
    }
    left_out = block == before;
    before = block;
  }
  return text;
}

}  // namespace homewarden::emulator
