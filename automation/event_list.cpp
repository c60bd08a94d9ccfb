#include "automation/event_list.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "automation/due_time.h"
#include "automation/macro_line.h"
#include "base/lines.h"
#include "base/text.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

const std::string kNoDim = " ";

std::string how_many(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// What a person should know about the lines of the event list.
class Findings {
 public:
  void bad_line(std::size_t number) {
    if (bad_lines_++ == 0) first_bad_line_ = number;
  }

  void event(const EventRecord& event) {
    const std::string_view why = why_never_run(event);
    if (why.empty() || never_++ > 0) return;
    first_never_ = event.device_label() + " at " + event.time + ": " + std::string(why);
  }

  std::string text() const {
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

 private:
  std::size_t bad_lines_ = 0;
  std::size_t first_bad_line_ = 0;
  std::size_t never_ = 0;
  std::string first_never_;
};

}  // namespace

ListView::Row row_of(const EventRecord& event) {
  return {
      event.roomdevice, event.housecode, event.unit, event.dim == kNoDim ? kNoDim : event.dim + "%",
      event.time,       event.action,    event.freq, event.days};
}

EventRecord event_in(const ListView::Row& row) {
  return {row[0], row[1], row[2], replace_all(row[3], "%", ""), row[4], row[5], row[6], row[7]};
}

EventList::EventList(FrmMain& form, Module1& module1, Files& files, ListFile& events,
                     const std::filesystem::path& folder)
    : form_(form),
      module1_(module1),
      files_(files),
      events_(events),
      macro_file_(folder / "macs.hlk") {
  form.ListView1.column_click.connect([this](int column) { form_.ListView1.sort_by(column - 1); });
}

Task<void> EventList::loadevents() {
  const auto was_selected = selected();
  form_.ListView1.rows = std::vector<ListView::Row>();
  form_.ListView1.selected = -1;
  form_.ListVIew2.clear();
  load_macros();
  if (events_.exists()) {
    const FileLock lock = co_await lock_files(form_, module1_);
    show_events(events_.content());
  } else {
    form_.lab_eventnotice.visible = false;
  }
  select(was_selected);
  form_.lab_noevents.visible = form_.ListView1.rows.get().empty();
}

void EventList::load_macros() {
  const auto content = files_.read(macro_file_);
  if (!content) return;
  std::vector<std::string> lines;
  LineReader reader(*content);
  while (const auto line = reader.next()) lines.push_back(shown_macro(*line));
  form_.ListVIew2.add_all(std::move(lines));
}

void EventList::show_events(const std::optional<std::string>& content) {
  std::vector<ListView::Row> rows;
  Findings findings;
  LineReader reader(content ? *content : std::string_view());
  for (std::size_t number = 1; const auto line = reader.next(); ++number) {
    if (line->empty()) continue;
    const auto event = parse_event(*line);
    if (!event) {
      findings.bad_line(number);
      continue;
    }
    findings.event(*event);
    rows.push_back(row_of(*event));
  }
  form_.ListView1.show(std::move(rows), 0);
  form_.lab_eventnotice.caption =
      content ? findings.text()
              : "The event list evelst.hwd cannot be read, so no event runs. Please check the file "
                "and its permissions in " +
                    macro_file_.parent_path().string() + ".";
  form_.lab_eventnotice.visible = !form_.lab_eventnotice.caption.get().empty();
}

std::optional<EventRecord> EventList::selected() const {
  const auto& rows = form_.ListView1.rows.get();
  const int row = form_.ListView1.selected;
  if (row < 0 || row >= static_cast<int>(rows.size())) return std::nullopt;
  return event_in(rows[static_cast<std::size_t>(row)]);
}

void EventList::select(const std::optional<EventRecord>& event) {
  if (!event) {
    form_.ListView1.selected = -1;
    return;
  }
  const auto& rows = form_.ListView1.rows.get();
  const auto found = std::find(rows.begin(), rows.end(), row_of(*event));
  form_.ListView1.selected = found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

}  // namespace homewarden
