#include "core/asking.h"

#include <utility>

namespace homewarden {

Task<void> tell(Dialogs& dialogs, std::string text, std::string title, MessageIcon icon) {
  Message message{std::move(text), std::move(title), icon, MessageButtons::kOk, Answer::kOk};
  co_await dialogs.message_box(std::move(message));
}

Task<void> tell_error(Dialogs& dialogs, std::string text) {
  co_await tell(dialogs, std::move(text), std::string("Error"), MessageIcon::kCritical);
}

Task<bool> ask(Dialogs& dialogs, std::string text, std::string title, Answer preselected,
               MessageIcon icon) {
  Message question{std::move(text), std::move(title), icon, MessageButtons::kYesNo, preselected};
  const Answer answer = co_await dialogs.message_box(std::move(question));
  co_return answer == Answer::kYes;
}

}  // namespace homewarden
