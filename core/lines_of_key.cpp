#include "core/lines_of_key.h"

#include <utility>

#include "base/lines.h"
#include "base/text.h"

namespace homewarden {
namespace {

bool has_line(std::string_view content, const ListFile::Choice& choice) {
  LineReader reader(content);
  while (const auto line = reader.next())
    if (choice(*line)) return true;
  return false;
}

}  // namespace

ListFile::Choice lines_of_key(std::string_view content, std::string key, IsKey is_key) {
  if (key.empty()) return [](std::string_view) { return false; };
  ListFile::Choice exact = [key, is_key](std::string_view line) { return is_key(line, key); };
  if (has_line(content, exact)) return exact;
  return
      [key = std::move(key)](std::string_view line) { return contains_ignoring_case(line, key); };
}

ListFile::Choice lines_of_key(std::string_view content, std::string key) {
  return lines_of_key(content, std::move(key), equals_ignoring_case);
}

std::string chosen_lines(std::string_view content, const ListFile::Choice& choice) {
  std::string chosen;
  LineReader reader(content);
  while (const auto line = reader.next())
    if (choice(*line)) chosen.append(chosen.empty() ? "" : "\r\n").append(*line);
  return chosen;
}

}  // namespace homewarden
