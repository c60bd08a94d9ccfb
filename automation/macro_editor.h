#pragma once

#include <string>

#include "automation/event_list.h"
#include "automation/macro_line.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/macro_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// The macro panel: saving a macro, and deleting the one that is clicked.
class MacroEditor {
 public:
  MacroEditor(MacroPanel& panel, Flags& flags, Operations& operations, EventLoop& loop,
              Module1& module1, Dialogs& dialogs, ListFile& macros, EventList& list);

  // Adds the macro of the four boxes to the list. Choices that are no macro are refused with a
  // message; one that would go round for ever is saved only when the person says so.
  Task<void> save();

  // Deletes the macro that is selected now, with lines equal to it, after a question that names it.
  // Nothing is deleted when none is selected, or when it has left the list by the answer.
  Task<void> deletemacro();

 private:
  Task<bool> may_go_round(const Macro& added);
  Task<bool> remove(std::string shown);
  std::string selected_entry() const;

  MacroPanel& panel_;
  Flags& flags_;
  EventLoop& loop_;
  Module1& module1_;
  Dialogs& dialogs_;
  ListFile& macros_;
  EventList& list_;
};

}  // namespace homewarden
