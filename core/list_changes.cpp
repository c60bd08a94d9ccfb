#include "core/list_changes.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/lines.h"
#include "core/replace_file.h"

namespace homewarden {
namespace {

// "rmlst.hwd: Kitchen~Lamp~A~1", and below it "becomes: Kitchen~Table Lamp~A~1". No name of a list
// has a colon. Below a line that is put into the list stands where: "comes behind: Kitchen~~~".
constexpr std::string_view kBehindName = ": ";
constexpr std::string_view kBecomes = "becomes: ";
constexpr std::string_view kComesBehind = "comes behind: ";
constexpr std::string_view kLineEnd = "\r\n";

ListFile::Edit edit_of(const std::map<std::string, std::string, std::less<>>& lines) {
  return [&lines](std::string_view line) -> std::optional<std::string> {
    const auto found = lines.find(line);
    if (found == lines.end()) return std::nullopt;
    return found->second;
  };
}

}  // namespace

ListChanges::ListChanges(Files& files, std::filesystem::path folder)
    : files_(files),
      folder_(std::move(folder)),
      notes_(folder_ / "tclines.tmp"),
      scratch_(folder_ / "tclist.tmp") {}

std::string ListChanges::unreadable(const std::vector<std::string>& lists) {
  const auto found = std::find_if(lists.begin(), lists.end(), [this](const std::string& list) {
    return files_.exists(folder_ / list) && !files_.read(folder_ / list);
  });
  return found == lists.end() ? std::string() : *found;
}

bool ListChanges::carry_out(const std::vector<Change>& changes) {
  recover();
  if (files_.exists(notes_)) return false;
  const auto noted = note(changes);
  if (!noted) return false;
  // By the edits, so that what somebody has saved since it was noted is changed too.
  const bool done = std::all_of(changes.begin(), changes.end(), [this](const Change& one) {
    return one.edit ? change(one.list, one.edit) : add(one.list, one.added);
  });
  if (done || take_back(*noted)) forget_notes();
  return done;
}

std::optional<std::vector<ListChanges::Noted>> ListChanges::note(
    const std::vector<Change>& changes) {
  std::vector<Noted> noted;
  std::string notes;
  for (const Change& one : changes) {
    ListFile list(files_, folder_ / one.list, scratch_);
    if (!list.exists() && one.added.empty()) continue;
    const auto content = list.exists() ? list.content() : std::string();
    if (!content) return std::nullopt;
    Noted& lines = noted.emplace_back(Noted{one.list, {}, missing_lines(*content, one.added)});
    for (const LineInPlace& added : lines.added) {
      notes.append(one.list).append(kBehindName).append(added.line).append(kLineEnd);
      notes.append(kComesBehind).append(added.behind).append(kLineEnd);
    }
    LineReader reader(*content);
    while (const auto line = one.edit ? reader.next() : std::nullopt) {
      auto edited = one.edit(*line);
      if (!edited) continue;
      notes.append(one.list).append(kBehindName).append(*line).append(kLineEnd);
      notes.append(kBecomes).append(*edited).append(kLineEnd);
      lines.lines.insert_or_assign(std::string(*line), std::move(*edited));
    }
  }
  if (!replace_file(files_, notes_, notes)) return std::nullopt;
  return noted;
}

// Nothing when they cannot be read or are not this program's.
std::optional<std::vector<ListChanges::Noted>> ListChanges::read_notes() {
  const auto content = files_.read(notes_);
  if (!content) return std::nullopt;
  std::vector<Noted> noted;
  LineReader reader(*content);
  while (const auto line = reader.next()) {
    const auto colon = line->find(kBehindName);
    const auto then = reader.next();
    if (colon == std::string_view::npos || !then) return std::nullopt;
    const std::string_view name = line->substr(0, colon);
    if (name.find_first_of("/\\") != std::string_view::npos) return std::nullopt;
    if (noted.empty() || noted.back().list != name) noted.push_back({std::string(name), {}});
    std::string of(line->substr(colon + kBehindName.size()));
    if (then->starts_with(kBecomes))
      noted.back().lines.insert_or_assign(std::move(of), then->substr(kBecomes.size()));
    else if (then->starts_with(kComesBehind))
      noted.back().added.push_back({std::move(of), std::string(then->substr(kComesBehind.size()))});
    else
      return std::nullopt;
  }
  return noted;
}

// A list in which nothing is to be changed is left alone.
bool ListChanges::change(const std::string& name, const ListFile::Edit& edit) {
  ListFile list(files_, folder_ / name, scratch_);
  if (!list.exists()) return true;
  const auto content = list.content();
  if (!content) return false;
  bool is_concerned = false;
  LineReader reader(*content);
  while (const auto line = reader.next()) is_concerned = is_concerned || edit(*line).has_value();
  if (!is_concerned || (list.write_edited(edit) && list.use_scratch())) return true;
  list.remove_scratch();
  return false;
}

bool ListChanges::add(const std::string& name, const std::vector<LineInPlace>& lines) {
  if (lines.empty()) return true;
  ListFile list(files_, folder_ / name, scratch_);
  const auto content = list.exists() ? list.content() : std::string();
  if (!content) return false;
  const auto make = [&lines](std::string_view old) { return with_lines(old, lines); };
  if (missing_lines(*content, lines).empty() || (list.write_made(make) && list.use_scratch()))
    return true;
  list.remove_scratch();
  return false;
}

bool ListChanges::take_out(const std::string& name, const std::vector<LineInPlace>& lines) {
  ListFile list(files_, folder_ / name, scratch_);
  if (lines.empty() || !list.exists()) return true;
  const auto goes = [&lines](std::string_view line) {
    return std::any_of(lines.begin(), lines.end(),
                       [line](const LineInPlace& one) { return one.line == line; });
  };
  const auto content = list.content();
  if (!content) return false;
  if (chosen_in_place(*content, goes).empty()) return true;
  if (list.write_scratch(goes) && list.use_scratch()) return true;
  list.remove_scratch();
  return false;
}

bool ListChanges::change_noted(const std::vector<Noted>& noted) {
  return std::all_of(noted.begin(), noted.end(), [this](const Noted& one) {
    return change(one.list, edit_of(one.lines)) && add(one.list, one.added);
  });
}

bool ListChanges::take_back(const std::vector<Noted>& noted) {
  return std::all_of(noted.rbegin(), noted.rend(), [this](const Noted& one) {
    Lines back;
    for (const auto& [from, to] : one.lines) back.emplace(to, from);
    return change(one.list, edit_of(back)) && take_out(one.list, one.added);
  });
}

// Emptied when it cannot go: it must not be carried out later.
void ListChanges::forget_notes() {
  if (files_.exists(notes_) && !files_.remove(notes_)) files_.write(notes_, "");
}

void ListChanges::recover() {
  discard_unfinished(files_, notes_);
  if (files_.exists(scratch_)) files_.remove(scratch_);
  if (!files_.exists(notes_)) return;
  const auto noted = read_notes();
  if (!noted || change_noted(*noted) || take_back(*noted)) forget_notes();
}

}  // namespace homewarden
