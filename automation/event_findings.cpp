#include "automation/event_findings.h"

#include <string_view>

#include "automation/due_time.h"

namespace homewarden {
namespace {

std::string how_many(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

void EventFindings::bad_line(std::size_t number) {
  if (bad_lines_++ == 0) first_bad_line_ = number;
}

void EventFindings::event(const EventRecord& event) {
  const std::string_view why = why_never_run(event);
  if (why.empty() || never_++ > 0) return;
  first_never_ = event.device_label() + " at " + event.time + ": " + std::string(why);
}

std::string EventFindings::text() const {
  std::string text;
  if (bad_lines_ > 0)
    text = how_many(bad_lines_, "line") + " of evelst.hwd cannot be understood and " +
           (bad_lines_ == 1 ? "is" : "are") + " left out, the first of them line " +
           std::to_string(first_bad_line_) + ". The file keeps them.";
  if (never_ > 0)
    text += (text.empty() ? "" : " ") + how_many(never_, "event") + " will never run. " +
            first_never_ + ".";
  return text;
}

}  // namespace homewarden
