#include "automation/event_findings.h"

#include <string_view>

#include "automation/due_time.h"
#include "automation/event_words.h"

namespace homewarden {
namespace {

std::string how_many(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

void EventFindings::bad_line(std::size_t number) {
  left_out_.add(number);
}

void EventFindings::event(const EventRecord& event) {
  const std::string_view why = why_never_run(event);
  if (why.empty() || never_++ > 0) return;
  const char* const before_time = sun_offset(event.time) == 0 ? " at " : ", ";
  first_never_ =
      event.device_label() + before_time + time_in_words(event.time) + ": " + std::string(why);
}

std::string EventFindings::text() const {
  std::string text;
  if (!left_out_.empty()) text = left_out_.text("evelst.hwd");
  if (never_ > 0)
    text += (text.empty() ? "" : " ") + how_many(never_, "event") + " will never run. " +
            first_never_ + ".";
  return text;
}

}  // namespace homewarden
