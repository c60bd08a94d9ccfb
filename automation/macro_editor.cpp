#include "automation/macro_editor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "automation/macro_chain.h"
#include "base/lines.h"
#include "core/asking.h"
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

MacroEditor::MacroEditor(MacroPanel& panel, Flags& flags, Operations& operations, EventLoop& loop,
                         Module1& module1, Dialogs& dialogs, ListFile& macros, EventList& list)
    : panel_(panel),
      flags_(flags),
      loop_(loop),
      module1_(module1),
      dialogs_(dialogs),
      macros_(macros),
      list_(list) {
  panel.com_savemacro.click.connect([this, &operations] { operations.start(save()); });
  panel.ListVIew2.mouse_down.connect([this, &operations] { operations.start(deletemacro()); });
}

Task<void> MacroEditor::save() {
  const auto macro = macro_of_choices(panel_.com_sel1.text.get(), panel_.mac_event.text.get(),
                                      panel_.com_sel2.text.get(), panel_.mac_whattodo.text.get());
  if (!macro) {
    co_await tell(
        dialogs_,
        "Please choose the trigger device, what happens to it, the device to switch and what to do "
        "with it from the lists.",
        "Please check", MessageIcon::kExclamation);
    co_return;
  }
  const bool wanted = co_await may_go_round(*macro);
  if (!wanted) co_return;
  // Needs no lock: nothing waits between reading the list and replacing it.
  if (!macros_.add(macro_line(*macro))) {
    co_await tell_error(
        dialogs_,
        "Sorry, the macro list macs.hlk could not be written, so your macro is not saved. Please "
        "check the disk, the permissions of the file and that no other program has it open.");
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
  const bool wanted = co_await ask(dialogs_, warning(chain), "Endless loop", Answer::kNo,
                                   MessageIcon::kExclamation);
  co_return wanted;
}

Task<void> MacroEditor::deletemacro() {
  const std::string shown = selected_entry();
  std::string question = "Do you want to delete the selected Macro?";
  if (!shown.empty()) question += "\r\n\r\n" + shown;
  const bool wanted = co_await ask(dialogs_, std::move(question), "Delete?", Answer::kNo);
  if (!wanted) co_return;
  const auto& items = panel_.ListVIew2.items.get();
  if (items.empty()) {
    co_await tell(dialogs_, "You dont have any macros to delete", "No Macros");
    co_return;
  }
  const bool is_listed = std::find(items.begin(), items.end(), shown) != items.end();
  if (is_listed && macros_.exists()) {
    const bool deleted = co_await remove(shown);
    if (!deleted)
      co_await tell_error(
          dialogs_,
          "Sorry, the macro list macs.hlk could not be written, so the macro is still there. "
          "Please check the disk, the permissions of the file and that no other program has it "
          "open.");
  }
  co_await list_.loadevents();
}

// True as well when the list has gone meanwhile.
Task<bool> MacroEditor::remove(std::string shown) {
  const FileLock lock = co_await lock_files(flags_, module1_);
  macros_.remove_scratch();
  const auto content = macros_.content();
  if (!content) co_return !macros_.exists();
  co_return macros_.write_scratch(lines_of_macro(*content, shown)) && macros_.use_scratch();
}

// The selected entry as it is shown; "" when none is selected.
std::string MacroEditor::selected_entry() const {
  const auto& items = panel_.ListVIew2.items.get();
  const int selected = panel_.ListVIew2.selected;
  if (selected < 0 || selected >= static_cast<int>(items.size())) return "";
  return items[static_cast<std::size_t>(selected)];
}

}  // namespace homewarden
