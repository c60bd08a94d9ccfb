#pragma once

#include <optional>

namespace homewarden {

// The system code page, Windows-1252, against Unicode. The five bytes to which it gives no
// character stand for the control characters of the same number, so that every byte comes back.

char16_t character_of(char byte);

// Nothing for a character that the code page does not have.
std::optional<char> byte_of(char16_t character);

}  // namespace homewarden
