#include "core/messages.h"

#include <algorithm>
#include <utility>

#include "core/time_text.h"

namespace homewarden {

Messages::Id Messages::tell(std::string text, Undo undo) {
  return add(std::move(text), false, false, std::move(undo));
}

Messages::Id Messages::fail(std::string text, Undo undo) {
  return add(std::move(text), true, false, std::move(undo));
}

Messages::Id Messages::note(std::string text, bool failed, Undo undo) {
  return add(std::move(text), failed, true, std::move(undo));
}

Messages::Id Messages::add(std::string text, bool failed, bool seen, Undo undo) {
  if (failed && !entries_.empty() && entries_.front().failed && entries_.front().text == text) {
    undos_.erase(entries_.front().id);
    entries_.erase(entries_.begin());
  }
  MessageEntry entry{++last_, hh_mm(clock_.local_time()), std::move(text), failed, bool(undo),
                     seen};
  if (undo) undos_[entry.id] = std::move(undo);
  entries_.insert(entries_.begin(), entry);
  if (entries_.size() > kKept) {
    undos_.erase(entries_.back().id);
    entries_.pop_back();
  }
  changed();
  if (!seen) appeared(entry);
  return entry.id;
}

MessageEntry* Messages::find(Id id) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [id](const MessageEntry& entry) { return entry.id == id; });
  return found == entries_.end() ? nullptr : &*found;
}

void Messages::undo(Id id) {
  const auto found = undos_.find(id);
  if (found == undos_.end()) return;
  const Undo undo = std::move(found->second);
  withdraw_undo(id);
  undo();
}

void Messages::undo_latest() {
  if (!undos_.empty()) undo(undos_.rbegin()->first);
}

void Messages::withdraw_undo(Id id) {
  if (undos_.erase(id) == 0) return;
  MessageEntry* entry = find(id);
  if (!entry) return;
  entry->undoable = false;
  entry->seen = true;
  changed();
}

void Messages::mark_seen(Id id) {
  MessageEntry* entry = find(id);
  if (!entry || entry->seen) return;
  entry->seen = true;
  changed();
}

void Messages::mark_all_seen() {
  if (unread() == 0) return;
  for (MessageEntry& entry : entries_) entry.seen = true;
  changed();
}

std::size_t Messages::unread() const {
  return static_cast<std::size_t>(std::count_if(
      entries_.begin(), entries_.end(), [](const MessageEntry& entry) { return !entry.seen; }));
}

}  // namespace homewarden
