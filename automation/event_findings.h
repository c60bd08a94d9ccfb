#pragma once

#include <cstddef>
#include <string>

#include "automation/event_record.h"
#include "base/lines.h"

namespace homewarden {

// What a person should know about the lines of the event list.
class EventFindings {
 public:
  // A line that is no event, by its number in the file, from 1. The first one is named in the text.
  void bad_line(std::size_t number);
  // An event that can be read; noted when it can never run. Only the first of them is named in the
  // text, the others are counted.
  void event(const EventRecord& event);

  // One sentence or two for all of them; "" when there is nothing to tell.
  std::string text() const;

 private:
  LeftOutLines left_out_;
  std::size_t never_ = 0;
  std::string first_never_;
};

}  // namespace homewarden
