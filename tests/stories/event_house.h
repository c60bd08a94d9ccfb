#pragma once

#include <string>
#include <vector>

#include "base/lines.h"
#include "tests/stories/house.h"

namespace homewarden::testing {

// A house with timed events.
class EventHouse : public House {
 public:
  explicit EventHouse(const std::string& events = {}) {
    if (!events.empty()) files.contents[file("evelst.hwd")] = events;
  }

  // The lines of the event list; "(missing)" when there is no file.
  std::vector<std::string> event_lines() {
    const auto found = files.contents.find(file("evelst.hwd"));
    if (found == files.contents.end()) return {"(missing)"};
    std::vector<std::string> lines;
    LineReader reader(found->second);
    while (const auto line = reader.next()) lines.emplace_back(*line);
    return lines;
  }

  // Runs until the wall clock shows this time of day, at most a day.
  void run_until(int hour, int minute, int second = 0) {
    const LocalTime now = loop.local_time();
    const int wait = (hour - now.hour) * 3600 + (minute - now.minute) * 60 + second - now.second;
    loop.advance(std::chrono::seconds(wait < 0 ? wait + 24 * 3600 : wait) -
                 std::chrono::milliseconds(now.millisecond));
  }

  // Selects the row of the event list whose first cells are these.
  bool select_event(const std::string& device) {
    const auto& rows = form().ListView1.rows.get();
    for (std::size_t row = 0; row < rows.size(); ++row)
      if (rows[row][0] == device) {
        form().ListView1.selected = static_cast<int>(row);
        return true;
      }
    return false;
  }
};

}  // namespace homewarden::testing
