#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace homewarden::qt {

// Texts of the program are bytes in the system code page (Windows-1252); people see Unicode. The
// five bytes that the code page leaves open stand for the control characters of the same number, so
// that every byte comes back as it was.
QString from_code_page(std::string_view bytes);

// Each character that the code page does not have becomes kUnknownCharacter, so that whoever takes
// the text can refuse it.
std::string to_code_page(const QString& text);

}  // namespace homewarden::qt
