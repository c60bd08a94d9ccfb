// A character file that anybody may have written.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "voice/character_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto read = homewarden::read_character({reinterpret_cast<const char*>(data), size});
  if (read.figure.has_value() != read.trouble.empty()) std::abort();
  return 0;
}
