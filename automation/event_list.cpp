#include "automation/event_list.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "automation/event_effect.h"
#include "automation/event_findings.h"
#include "automation/macro_line.h"
#include "base/code_page.h"
#include "base/lines.h"
#include "base/text.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

const std::string kNoDim = " ";
const char* const kNoMacro = "This line is no macro and never does anything.";

}  // namespace

ListView::Row row_of(const EventRecord& event) {
  return {
      event.roomdevice, event.housecode, event.unit, event.dim == kNoDim ? kNoDim : event.dim + "%",
      event.time,       event.action,    event.freq, event.days};
}

EventRecord event_in(const ListView::Row& row) {
  return {row[0], row[1], row[2], replace_all(row[3], "%", ""), row[4], row[5], row[6], row[7]};
}

EventList::EventList(EventPanel& panel, MacroPanel& macro_panel, Flags& flags, Module1& module1,
                     HouseIndex& house, ListFile& events, ListFile& macros)
    : panel_(panel),
      macro_panel_(macro_panel),
      flags_(flags),
      module1_(module1),
      house_(house),
      events_(events),
      macros_(macros) {
  panel.ListView1.column_click.connect(
      [this](int column) { panel_.ListView1.sort_by(column - 1); });
  house.changed.connect([this] {
    mark_events();
    mark_macros();
  });
  renamed.connect([this](const ListFile::Edit& edit) { follow(edit); });
}

// At once, so that the row that is selected or edited is still found when the file is read again.
void EventList::follow(const ListFile::Edit& edit) {
  std::vector<ListView::Row> rows = panel_.ListView1.rows;
  for (ListView::Row& row : rows) {
    const auto line = edit(event_in(row).key());
    const auto event = line ? parse_event(*line) : std::nullopt;
    if (event) row = row_of(*event);
  }
  panel_.ListView1.rows = std::move(rows);
}

Task<void> EventList::loadevents() {
  const auto was_selected = selected();
  panel_.ListView1.marks = std::map<int, std::string>();
  panel_.ListView1.rows = std::vector<ListView::Row>();
  panel_.ListView1.selected = -1;
  load_macros();
  if (events_.exists()) {
    const FileLock lock = co_await lock_files(flags_, module1_);
    show_events(events_.content());
  } else {
    panel_.lab_eventnotice.visible = false;
  }
  select(was_selected);
  panel_.lab_noevents.visible = panel_.ListView1.rows.get().empty();
}

void EventList::load_macros() {
  macro_panel_.ListVIew2.clear();
  const auto content = macros_.content();
  macro_panel_.lab_macronotice.visible = !content && macros_.exists();
  macro_panel_.lab_macronotice.caption =
      "The macro list macs.hlk cannot be read, so no macro runs. Please check the file and its "
      "permissions in " +
      from_utf8(macros_.path().parent_path().string()) + ".";
  if (!content) return;
  std::vector<std::string> lines;
  LineReader reader(*content);
  while (const auto line = reader.next()) lines.push_back(shown_macro(*line));
  macro_panel_.ListVIew2.add_all(std::move(lines));
  mark_macros();
}

void EventList::mark_macros() {
  const auto& shown = macro_panel_.ListVIew2.items.get();
  std::map<int, std::string> marks;
  for (std::size_t row = 0; row < shown.size(); ++row) {
    if (trim_blanks(shown[row]).empty()) continue;
    const auto macro = parse_macro(replace_all(shown[row], " ", "~"));
    std::string wrong = macro ? what_is_wrong_with(*macro, house_) : kNoMacro;
    if (!wrong.empty()) marks.emplace(static_cast<int>(row), std::move(wrong));
  }
  macro_panel_.ListVIew2.marks = std::move(marks);
}

void EventList::mark_events() {
  const auto& rows = panel_.ListView1.rows.get();
  std::map<int, std::string> marks;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    std::string wrong = what_is_wrong_with(event_in(rows[row]), house_);
    if (!wrong.empty()) marks.emplace_hint(marks.end(), static_cast<int>(row), std::move(wrong));
  }
  panel_.ListView1.marks = std::move(marks);
}

void EventList::show_events(const std::optional<std::string>& content) {
  std::vector<ListView::Row> rows;
  EventFindings findings;
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
  panel_.ListView1.show(std::move(rows), 0);
  mark_events();
  panel_.lab_eventnotice.caption =
      content ? findings.text()
              : "The event list evelst.hwd cannot be read, so no event runs. Please check the file "
                "and its permissions in " +
                    from_utf8(events_.path().parent_path().string()) + ".";
  panel_.lab_eventnotice.visible = !panel_.lab_eventnotice.caption.get().empty();
}

std::optional<EventRecord> EventList::selected() const {
  const auto& rows = panel_.ListView1.rows.get();
  const int row = panel_.ListView1.selected;
  if (row < 0 || row >= static_cast<int>(rows.size())) return std::nullopt;
  return event_in(rows[static_cast<std::size_t>(row)]);
}

void EventList::select(const std::optional<EventRecord>& event) {
  if (!event) {
    panel_.ListView1.selected = -1;
    return;
  }
  const auto& rows = panel_.ListView1.rows.get();
  const auto found = std::find(rows.begin(), rows.end(), row_of(*event));
  panel_.ListView1.selected = found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

}  // namespace homewarden
