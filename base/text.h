#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace homewarden {

// The text rules of the program. Texts are bytes in the system code page (Windows-1252); the
// letters beyond ASCII have upper and lower case too. No rule depends on the locale.

char to_lower(char letter);
std::string to_lower(std::string_view text);
// In lower case and without its accent: e for "E acute", a for "ae". What is no letter stays.
char plain_letter(char letter);

// A search for a text inside another ignores letter case everywhere in the program; a comparison of
// two whole values respects it. The position, or std::string_view::npos; 0 for an empty part.
std::size_t find_ignoring_case(std::string_view text, std::string_view part);
bool contains_ignoring_case(std::string_view text, std::string_view part);
bool equals_ignoring_case(std::string_view a, std::string_view b);

// Without the blanks at both ends; tabs and line ends stay. Points into the text.
std::string_view trim_blanks(std::string_view text);

// Every blank removed, inside the text too.
std::string without_blanks(std::string_view text);

// As it may stand in a message, whoever wrote it: control characters become blanks, and behind
// `most` characters three dots stand for the rest.
std::string on_one_line(std::string_view text, std::size_t most);

// From left to right; what was put in is not looked at again. An empty `from` replaces nothing.
std::string replace_all(std::string_view text, std::string_view from, std::string_view to);
std::string replace_all_ignoring_case(std::string_view text, std::string_view from,
                                      std::string_view to);

// The number that a text begins with after blanks: sign, digits, decimal point. 0 when there is
// none: "12abc" is 12, "abc" is 0.
double leading_number(std::string_view text);

// The whole text as a 16-bit integer, blanks around it allowed; nothing when it is none.
std::optional<int> to_integer16(std::string_view text);

// 0 to 15; -1 for what is no hexadecimal digit.
int hex_digit(char letter);

// To the nearest whole number, halves to the even one: 0.5 is 0, 1.5 is 2. The number must be one
// that a long can hold.
long round_to_even(double number);

// The shortest decimal text that reads back as the same number: "100", "1507.5".
std::string text_of_single(float number);

// At least two digits: "07", "12", "123". For numbers from 0.
std::string two_digits(int number);

// "%41" becomes "A". A percent sign without two hexadecimal digits behind it stays.
std::string percent_decoded(std::string_view encoded);

}  // namespace homewarden
