#include "automation/macro_editor.h"

#include <utility>

#include "base/lines.h"
#include "core/lists/file_lock.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

std::string warning(const std::vector<MacroEnd>& chain) {
  std::string text = "This macro can go round for ever:\r\n";
  for (const MacroEnd& end : chain)
    text += "\r\n" + std::string(&end == &chain.front() ? "When " : "then ") + in_words(end);
  return text + ", and so on.\r\n\r\nDo you want to save it all the same?";
}

}  // namespace

MacroEditor::MacroEditor(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
                         Dialogs& dialogs, ListFile& macros, EventList& list)
    : form_(form), loop_(loop), module1_(module1), dialogs_(dialogs), macros_(macros), list_(list) {
  form.com_savemacro.click.connect([this, &operations] { operations.start(save()); });
  form.ListVIew2.mouse_down.connect([this, &operations] { operations.start(deletemacro()); });
}

Task<void> MacroEditor::save() {
  const auto macro = macro_of_choices(form_.com_sel1.text.get(), form_.mac_event.text.get(),
                                      form_.com_sel2.text.get(), form_.mac_whattodo.text.get());
  if (!macro) {
    co_await tell(
        "Please choose the trigger device, what happens to it, the device to switch and what to do "
        "with it from the lists.",
        "Please check", MessageIcon::kExclamation);
    co_return;
  }
  const bool wanted = co_await may_go_round(*macro);
  if (!wanted) co_return;
  // Needs no lock: nothing waits between reading the list and replacing it.
  if (!macros_.add(macro_line(*macro))) {
    co_await tell(
        "Sorry, the macro list macs.hlk could not be written, so your macro is not saved. Please "
        "check the disk and the permissions of the file.",
        "Error", MessageIcon::kCritical);
    co_return;
  }
  co_await list_.loadevents();
  co_await pending_events(loop_);
}

// True when the macro is harmless, or is to be saved although it is not.
Task<bool> MacroEditor::may_go_round(const Macro& added) {
  std::vector<Macro> macros;
  const auto content = macros_.content();
  LineReader reader(content ? *content : std::string_view());
  while (const auto line = reader.next())
    if (auto macro = parse_macro(*line)) macros.push_back(std::move(*macro));
  const auto chain = endless_chain(macros, added);
  if (chain.empty()) co_return true;
  Message message{warning(chain), "Endless loop", MessageIcon::kExclamation,
                  MessageButtons::kYesNo};
  const Answer answer = co_await dialogs_.message_box(std::move(message));
  co_return answer == Answer::kYes;
}

Task<void> MacroEditor::deletemacro() {
  const std::string shown = selected_entry();
  Message question{"Do you want to delete the selected Macro?", "Delete?", MessageIcon::kQuestion,
                   MessageButtons::kYesNo};
  const Answer answer = co_await dialogs_.message_box(std::move(question));
  if (answer != Answer::kYes) co_return;
  if (form_.ListVIew2.items.get().empty()) {
    co_await tell("You dont have any macros to delete", "No Macros", MessageIcon::kInformation);
    co_return;
  }
  bool deleted = true;
  if (!shown.empty() && macros_.exists()) {
    const FileLock lock = co_await lock_files(form_, module1_);
    macros_.remove_scratch();
    const auto content = macros_.content();
    deleted =
        content && macros_.write_scratch(lines_of_macro(*content, shown)) && macros_.use_scratch();
  }
  if (!deleted)
    co_await tell(
        "Sorry, the macro list macs.hlk could not be written, so the macro is still there. Please "
        "check the disk and the permissions of the file.",
        "Error", MessageIcon::kCritical);
  co_await list_.loadevents();
}

Task<void> MacroEditor::tell(const char* text, const char* title, MessageIcon icon) {
  Message message{text, title, icon, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

// The selected entry as it is shown; "" when none is selected.
std::string MacroEditor::selected_entry() const {
  const auto& items = form_.ListVIew2.items.get();
  const int selected = form_.ListVIew2.selected;
  if (selected < 0 || selected >= static_cast<int>(items.size())) return "";
  return items[static_cast<std::size_t>(selected)];
}

}  // namespace homewarden
