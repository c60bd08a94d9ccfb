#pragma once

#include "core/messages.h"
#include "ui/controls.h"
#include "ui/message_panel.h"

namespace homewarden {

// Shows the messages of the house. Each stands at the foot of the page for eight seconds, which do
// not pass while the pointer or the focus is on it, nor while the window is not on the screen. What
// stood there to the end counts as seen, but a failure only when a person has closed it or opened
// the list.
class MessageList {
 public:
  MessageList(MessagePanel& panel, Window& window, Messages& messages);

 private:
  void appear(const MessageEntry& entry);
  void show();
  void time_message();
  void put_away(bool seen);
  void open_or_close();

  MessagePanel& panel_;
  Window& window_;
  Messages& messages_;
};

}  // namespace homewarden
