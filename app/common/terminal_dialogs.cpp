#include "app/common/terminal_dialogs.h"

#include "app/common/status_printer.h"

namespace homewarden {

Task<Answer> TerminalDialogs::message_box(Message message) {
  print_line(output_, message.title + ": " + message.text);
  co_return message.buttons == MessageButtons::kYesNo ? Answer::kNo : Answer::kOk;
}

Task<std::optional<std::string>> TerminalDialogs::input_box(Question question) {
  print_line(output_, question.title + ": " + question.prompt);
  co_return std::nullopt;
}

}  // namespace homewarden
