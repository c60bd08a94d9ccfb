#include "core/house/message_list.h"

#include <algorithm>

namespace homewarden {

MessageList::MessageList(MessagePanel& panel, Window& window, Messages& messages)
    : panel_(panel), window_(window), messages_(messages) {
  messages.changed.connect([this] { show(); });
  messages.appeared.connect([this](const MessageEntry& entry) { appear(entry); });
  panel.message_held.changed.connect([this] { time_message(); });
  window.visible.changed.connect([this] { time_message(); });
  window.state.changed.connect([this] { time_message(); });
  panel.timermessage.tick.connect([this] { put_away(!panel_.message.get().failed); });
  panel.message_closed.connect([this] { put_away(true); });
  panel.messages_asked.connect([this] { open_or_close(); });
  panel.undo_asked.connect([this](std::uint64_t id) { messages_.undo(id); });
  panel.undo_latest_asked.connect([this] { messages_.undo_latest(); });
}

// Whoever has the list open sees it there.
void MessageList::appear(const MessageEntry& entry) {
  if (panel_.frm_messages.visible) {
    messages_.mark_seen(entry.id);
    return;
  }
  panel_.message = entry;
  time_message();
}

void MessageList::show() {
  panel_.unread = static_cast<int>(messages_.unread());
  panel_.messages = messages_.entries();
  // What was undone, or cannot be undone any more, has no offer to stand for.
  const auto& entries = messages_.entries();
  const auto shown = std::find_if(entries.begin(), entries.end(), [this](const MessageEntry& one) {
    return one.id == panel_.message.get().id;
  });
  const bool offers = shown != entries.end() && shown->undoable;
  if (panel_.message.get().undoable && !offers) put_away(true);
}

void MessageList::time_message() {
  const bool on_screen = window_.visible && window_.state == WindowState::kNormal;
  panel_.timermessage.set_enabled(false);
  panel_.timermessage.set_enabled(panel_.message.get().id != 0 && !panel_.message_held &&
                                  on_screen);
}

void MessageList::put_away(bool seen) {
  const auto id = panel_.message.get().id;
  panel_.message = MessageEntry{};
  time_message();
  if (seen) messages_.mark_seen(id);
}

void MessageList::open_or_close() {
  const bool open = !panel_.frm_messages.visible;
  if (open) {
    panel_.message = MessageEntry{};
    time_message();
    messages_.mark_all_seen();
  }
  panel_.frm_messages.visible = open;
}

}  // namespace homewarden
