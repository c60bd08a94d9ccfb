#pragma once

#include "platform/dialogs.h"
#include "platform/linux/line_output.h"

namespace homewarden {

// Where nobody can answer, messages are printed and taken as read; what could change or delete
// something is answered with No, and a question for a text is cancelled.
class TerminalDialogs : public Dialogs {
 public:
  explicit TerminalDialogs(os_linux::LineOutput& output) : output_(output) {}

  Task<Answer> message_box(Message message) override;
  Task<std::optional<std::string>> input_box(Question question) override;

 private:
  os_linux::LineOutput& output_;
};

}  // namespace homewarden
