#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/signal.h"
#include "platform/clock.h"

namespace homewarden {

// Something that happened once, as a person reads it.
struct MessageEntry {
  std::uint64_t id = 0;  // 0: none
  std::string time;      // "14:05"
  std::string text;      // in the system code page
  bool failed = false;   // it tells of what could not be done
  bool undoable = false;
  bool seen = false;

  bool operator==(const MessageEntry&) const = default;
};

// What has happened since the program started and must be able to be read again: failures, what can
// be undone, what was carried out at a person's wish. Failures stay unread until a person has seen
// them, whatever succeeds after them. What is wrong for as long as it is belongs to Notices.
class Messages {
 public:
  static constexpr std::size_t kKept = 100;  // the oldest go first
  using Id = std::uint64_t;
  using Undo = std::function<void()>;

  explicit Messages(const Clock& clock) : clock_(clock) {}

  // Appear at once. A failure that says the same as the message before it takes its place.
  Id tell(std::string text, Undo undo = {});
  Id fail(std::string text, Undo undo = {});
  // What stands before a person's eyes already: kept, and counted as seen.
  Id note(std::string text, bool failed = false, Undo undo = {});

  // Calls what was given with the message, which then offers it no more. Nothing happens when it
  // offers nothing.
  void undo(Id id);
  // The same with the latest message that offers something.
  void undo_latest();
  void withdraw_undo(Id id);

  void mark_seen(Id id);
  void mark_all_seen();

  const std::vector<MessageEntry>& entries() const { return entries_; }  // the newest first
  std::size_t unread() const;

  Signal<> changed;
  Signal<const MessageEntry&> appeared;  // told or failed, not noted

 private:
  Id add(std::string text, bool failed, bool seen, Undo undo);
  MessageEntry* find(Id id);

  const Clock& clock_;
  std::vector<MessageEntry> entries_;
  std::map<Id, Undo> undos_;
  Id last_ = 0;
};

}  // namespace homewarden
