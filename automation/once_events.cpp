#include "automation/once_events.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/lines.h"

namespace homewarden {
namespace {

const char* const kSubject = "once-events";

// "Hall Lamp off at 07:30 and 2 more" of keys.
std::string names_of(const std::set<std::string>& keys) {
  const std::string& key = *keys.begin();
  const auto event = parse_event(key + "~");
  std::string text = event ? event->roomdevice + " " + event->action + " at " + event->time : key;
  if (keys.size() > 1) text += " and " + std::to_string(keys.size() - 1) + " more";
  return text;
}

}  // namespace

OnceEvents::OnceEvents(OnceRemoval& removal, EventMemory& memory, Notices& notices)
    : removal_(removal), memory_(memory), notices_(notices) {}

void OnceEvents::restore() {
  auto slot = removal_.once_removal.begin();
  const auto end = slot + OnceRemoval::kOnceSlots;
  for (std::string& key : memory_.once_events()) {
    slot = std::find(slot, end, "");
    if (slot != end) *slot = std::move(key);
  }
  remember();
}

bool OnceEvents::is_queued(const EventRecord& event) const {
  const auto end = removal_.once_removal.begin() + OnceRemoval::kOnceSlots;
  return std::find(removal_.once_removal.begin(), end, event.once_key()) != end;
}

void OnceEvents::queue(const EventRecord& event) {
  if (is_queued(event)) return;
  const auto end = removal_.once_removal.begin() + OnceRemoval::kOnceSlots;
  const auto slot = std::find(removal_.once_removal.begin(), end, "");
  if (slot == end) {
    unqueued_.insert(event.once_key());
  } else {
    *slot = event.once_key();
    unqueued_.erase(*slot);
    remember();
  }
  tell();
}

void OnceEvents::edit(const ListFile::Edit& edit) {
  for (std::string& slot : removal_.once_removal)
    if (const auto edited = edit(slot)) slot = *edited;
  remember();
}

void OnceEvents::removed(std::string& slot) {
  not_removed_.erase(slot);
  slot.clear();
  remember();
  tell();
}

void OnceEvents::not_removed(const std::string& slot) {
  not_removed_.insert(slot);
  tell();
}

void OnceEvents::look_for_unqueued(std::string_view list) {
  std::set<std::string> found;
  LineReader reader(list);
  while (const auto line = reader.next())
    if (const auto event = parse_event(*line); event && unqueued_.contains(event->once_key()))
      found.insert(event->once_key());
  unqueued_ = std::move(found);
  tell();
}

void OnceEvents::remember() {
  std::vector<std::string> keys;
  for (std::size_t slot = 0; slot < OnceRemoval::kOnceSlots; ++slot)
    if (!removal_.once_removal[slot].empty()) keys.push_back(removal_.once_removal[slot]);
  memory_.set_once_events(keys);
}

void OnceEvents::tell() {
  std::string text;
  if (!not_removed_.empty())
    text = "The once-event " + names_of(not_removed_) +
           " cannot be removed from evelst.hwd: the file or its folder cannot be written. It will "
           "not run again.";
  if (!unqueued_.empty())
    text += std::string(text.empty() ? "" : " ") +
            "Too many once-events came due together: " + names_of(unqueued_) +
            " stays in the list and runs again at its next time.";
  notices_.tell(kSubject, std::move(text));
}

}  // namespace homewarden
