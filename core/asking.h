#pragma once

#include <string>

#include "base/task.h"
#include "platform/dialogs.h"

namespace homewarden {

// What operations say to a person and ask. Each returns when the box is closed.

Task<void> tell(Dialogs& dialogs, std::string text, std::string title,
                MessageIcon icon = MessageIcon::kInformation);
// Titled "Error", with the icon of a failure, for what could not be done.
Task<void> tell_error(Dialogs& dialogs, std::string text);

// True only for Yes. `preselected` is the answer that Enter gives.
Task<bool> ask(Dialogs& dialogs, std::string text, std::string title,
               Answer preselected = Answer::kYes, MessageIcon icon = MessageIcon::kQuestion);

}  // namespace homewarden
