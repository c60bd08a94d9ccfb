#include "automation/off_events.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/code_page.h"
#include "base/lines.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

constexpr int kLooks = 4;                      // at the files, each two seconds after the other
constexpr std::size_t kLongestFileName = 255;  // of most systems, in bytes

// Nothing for a list that is there and cannot be read.
std::optional<std::string> content_of(ListFile& list) {
  return list.exists() ? list.content() : std::string();
}

std::size_t count_of(std::string_view content, std::string_view key) {
  std::size_t count = 0;
  LineReader reader(content);
  while (const auto line = reader.next())
    if (*line == key) ++count;
  return count;
}

bool take_out(ListFile& list, const std::string& key) {
  const auto is_it = [&key](std::string_view line) { return line == key; };
  if (list.write_scratch(is_it) && list.use_scratch()) return true;
  list.remove_scratch();
  return false;
}

}  // namespace

OffEvents::OffEvents(Files& files, std::filesystem::path folder, const ProfileSwitch& profiles,
                     ListFile& events, EventList& list, const OnceEvents& once, Flags& flags,
                     Module1& module1)
    : files_(files),
      folder_(std::move(folder)),
      profiles_(profiles),
      events_(events),
      list_(list),
      once_(once),
      flags_(flags),
      module1_(module1) {}

// Its scratch file is that of the changes of several lists, which removes what a stop leaves of it;
// both are used by who holds the files.
ListFile OffEvents::off_list() {
  return {files_, folder_ / (profiles_.active() + " (off).txt"), folder_ / "tclist.tmp"};
}

std::optional<std::vector<OffEvents::Entry>> OffEvents::all() {
  ListFile off = off_list();
  std::vector<Entry> entries;
  std::set<std::string, std::less<>> seen;
  for (ListFile* list : {&events_, &off}) {
    const auto content = content_of(*list);
    if (!content) return std::nullopt;
    LineReader reader(*content);
    while (const auto line = reader.next()) {
      auto event = parse_event(*line);
      if (event && seen.emplace(*line).second)
        entries.push_back({*std::move(event), list == &events_});
    }
  }
  return entries;
}

std::string OffEvents::trouble() {
  ListFile off = off_list();
  for (ListFile* list : {&events_, &off})
    if (!content_of(*list)) return refused(*list).problem;
  return "";
}

Task<OffEvents::Result> OffEvents::switch_event(std::string key, bool on) {
  for (int look = 1; flags_.filebusy; ++look) {
    if (look == kLooks) {
      Result busy{Outcome::kBusy, "The files of the house are in use. Please try again."};
      co_return busy;
    }
    co_await module1_.pause(2);
  }
  Result result;
  {
    const FileLock lock(flags_);
    const auto event = parse_event(key);
    result = event ? move(*event, on) : Result{Outcome::kGone, "There is no such event any more."};
  }
  if (result.outcome != Outcome::kDone) co_return result;
  co_await list_.loadevents();
  changed();
  co_return result;
}

OffEvents::Result OffEvents::move(const EventRecord& event, bool on) {
  ListFile off = off_list();
  ListFile& from = on ? off : events_;
  ListFile& to = on ? events_ : off;
  const std::string key = event.key();
  const auto there = content_of(from);
  if (!there) return refused(from);
  const auto here = content_of(to);
  if (!here) return refused(to);
  const std::size_t lines = count_of(*there, key);
  const bool is_there = count_of(*here, key) > 0;  // also what a stop left in both lists
  if (lines == 0 && !is_there) return {Outcome::kGone, "There is no such event any more."};
  if (lines == 0) return {};
  if (!on && off.path().filename().string().size() > kLongestFileName)
    return {Outcome::kRefused,
            "The name of the profile is too long for a file of its events that are off."};
  if (once_.is_queued(event))
    return {Outcome::kRefused, "This event has had its time and is about to be removed."};
  bool used = false;
  if (!on) list_.in_use(event, used);
  if (used) return {Outcome::kRefused, "Somebody is editing this event in the window."};

  std::string added = key;
  for (std::size_t line = 1; line < lines; ++line) added += "\r\n" + key;
  if (!is_there && !to.add(added)) return refused(to);
  if (!take_out(from, key)) {
    if (!is_there) take_out(to, key);
    return refused(from);
  }
  if (on && content_of(off) == "") files_.remove(off.path());
  return {};
}

OffEvents::Result OffEvents::refused(const ListFile& list) const {
  return {Outcome::kRefused,
          from_utf8(list.path().filename().string()) +
              " cannot be read or written, so the event stays as it was. Please check the disk and "
              "the permissions of the file."};
}

}  // namespace homewarden
