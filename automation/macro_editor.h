#pragma once

#include <string>
#include <vector>

#include "automation/event_list.h"
#include "automation/macro_line.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"

namespace homewarden {

// The macro panel: saving a macro, and deleting the one that is clicked.
class MacroEditor {
 public:
  MacroEditor(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
              Dialogs& dialogs, ListFile& macros, EventList& list);

  // Adds the macro of the four boxes to the list. Choices that are no macro are refused with a
  // message; one that would go round for ever is saved only when the person says so.
  Task<void> save();

  // Deletes the selected macro, and every line that contains it, after a question.
  Task<void> deletemacro();

 private:
  Task<bool> may_go_round(const Macro& added);
  Task<void> tell(const char* text, const char* title, MessageIcon icon);
  std::string selected_entry() const;

  FrmMain& form_;
  EventLoop& loop_;
  Module1& module1_;
  Dialogs& dialogs_;
  ListFile& macros_;
  EventList& list_;
};

}  // namespace homewarden
