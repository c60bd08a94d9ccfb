#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace homewarden {

// The system code page, Windows-1252, against Unicode. The five bytes to which it gives no
// character stand for the control characters of the same number, so that every byte comes back.

// Every byte has one.
char16_t character_of(char byte);

// What a person typed and the code page does not have is this control character (SUBSTITUTE), which
// no name, address or password can hold; people see it as U+FFFD.
inline constexpr char kUnknownCharacter = '\x1A';

// Nothing for a character that the code page does not have.
std::optional<char> byte_of(char16_t character);

// What the system names in UTF-8, a file for instance, in the words that a person reads: "?" for a
// character that the code page does not have. Bytes that are no UTF-8 stay.
std::string from_utf8(std::string_view text);

// The bytes of the code page in UTF-8.
std::string to_utf8(std::string_view text);

}  // namespace homewarden
