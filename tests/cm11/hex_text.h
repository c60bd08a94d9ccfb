#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace homewarden::testing {

// "04 66" for the bytes 04 and 66.
inline std::string hex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if (!text.empty()) text += ' ';
    text += {kDigits[value >> 4], kDigits[value & 0x0F]};
  }
  return text;
}

// The other way round.
inline std::string raw(const std::string& text) {
  std::istringstream stream(text);
  std::string bytes;
  for (unsigned byte = 0; stream >> std::hex >> byte;) bytes += static_cast<char>(byte);
  return bytes;
}

inline std::string trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? ""
                                    : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

// The steps of a conversation, which "|" divides.
inline std::vector<std::string> steps_of(const std::string& conversation) {
  std::istringstream stream(conversation);
  std::vector<std::string> steps;
  for (std::string step; std::getline(stream, step, '|');) steps.push_back(trimmed(step));
  return steps;
}

}  // namespace homewarden::testing
