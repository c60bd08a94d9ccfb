#include "api/line_id.h"

#include <cstdint>

namespace homewarden {

std::string line_id(std::string_view prefix, std::string_view line) {
  // FNV-1a, 64 bits (RFC 9923).
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : line) hash = (hash ^ static_cast<unsigned char>(c)) * 0x00000100000001b3;
  std::string id(prefix);
  for (int shift = 60; shift >= 0; shift -= 4) id += "0123456789abcdef"[(hash >> shift) & 15];
  return id;
}

}  // namespace homewarden
