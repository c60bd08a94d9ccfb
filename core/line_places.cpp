#include "core/line_places.h"

#include <algorithm>
#include <set>

#include "base/lines.h"

namespace homewarden {

std::vector<LineInPlace> chosen_in_place(std::string_view content, const ListFile::Choice& choice) {
  std::vector<LineInPlace> chosen;
  std::string_view before;
  LineReader reader(content);
  while (const auto line = reader.next()) {
    if (choice(*line)) chosen.push_back({std::string(*line), std::string(before)});
    before = *line;
  }
  return chosen;
}

std::vector<LineInPlace> missing_lines(std::string_view content,
                                       const std::vector<LineInPlace>& lines) {
  std::set<std::string_view> there;
  LineReader reader(content);
  while (const auto line = reader.next()) there.insert(*line);
  std::vector<LineInPlace> missing;
  for (const LineInPlace& line : lines)
    if (there.insert(line.line).second) missing.push_back(line);
  return missing;
}

std::string with_lines(std::string_view content, const std::vector<LineInPlace>& lines) {
  const auto missing = missing_lines(content, lines);
  std::vector<std::string_view> all;
  LineReader reader(content);
  while (const auto line = reader.next()) all.push_back(*line);
  for (const LineInPlace& line : missing) {
    auto place = all.begin();
    if (!line.behind.empty()) {
      const auto before = std::find(all.begin(), all.end(), line.behind);
      place = before == all.end() ? before : before + 1;
    }
    all.insert(place, line.line);
  }
  std::string whole;
  for (const std::string_view line : all) whole.append(line).append("\r\n");
  return whole;
}

}  // namespace homewarden
