#include "web/page_text.h"

namespace homewarden {

std::string for_link(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  // What an address may hold behind "?", but "&" and "'", which end an attribute or begin an
  // entity, and "+", which some take for a blank.
  constexpr std::string_view kStays = "-._~!$()*,;=:@/?";
  std::string encoded;
  for (const char letter : text) {
    const auto code = static_cast<unsigned char>(letter);
    const bool is_letter = code < 0x80 && (to_lower(letter) >= 'a' && to_lower(letter) <= 'z');
    const bool is_digit = letter >= '0' && letter <= '9';
    if (is_letter || is_digit || kStays.find(letter) != std::string_view::npos)
      encoded += letter;
    else
      encoded.append({'%', kDigits[code / 16U], kDigits[code % 16U]});
  }
  return encoded;
}

std::string for_reading(std::string_view text) {
  std::string escaped;
  for (const char letter : text) {
    if (letter == '&')
      escaped += "&amp;";
    else if (letter == '<')
      escaped += "&lt;";
    else if (letter == '>')
      escaped += "&gt;";
    else if (letter == '"')
      escaped += "&quot;";
    else
      escaped += letter;
  }
  return escaped;
}

}  // namespace homewarden
