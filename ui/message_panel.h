#pragma once

#include <cstdint>
#include <vector>

#include "core/messages.h"
#include "ui/controls.h"

namespace homewarden {

// What has happened: the message that stands at the foot of the page for a while, and the list of
// all of them.
struct MessagePanel {
  static constexpr int kShown = 8000;  // milliseconds

  Property<MessageEntry> message;  // its id is 0 while there is none
  // The pointer or the focus is on it: it stays.
  Property<bool> message_held;
  Timer timermessage{kShown, false};  // runs only while there is one and it is not held

  Frame frm_messages{false};  // the list
  Property<std::vector<MessageEntry>> messages;
  Property<int> unread;

  Signal<> messages_asked;           // a person opens or closes the list
  Signal<> message_closed;           // a person has read the message
  Signal<std::uint64_t> undo_asked;  // of the message with this id
  Signal<> undo_latest_asked;
};

}  // namespace homewarden
