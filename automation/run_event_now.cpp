#include "automation/run_event_now.h"

#include <utility>

#include "automation/due_time.h"
#include "base/text.h"

namespace homewarden {

RunEventNow::RunEventNow(FrmMain& form, Operations& operations, Dialogs& dialogs, EventList& list,
                         DeviceCommands& commands)
    : form_(form), dialogs_(dialogs), list_(list), commands_(commands) {
  form.mnu_runeventnow.click.connect([this, &operations] { operations.start(run()); });
}

Task<void> RunEventNow::run() {
  if (form_.ListView1.rows.get().empty()) {
    Message message{"You dont have any events to run", "No events", MessageIcon::kInformation,
                    MessageButtons::kOk};
    co_await dialogs_.message_box(std::move(message));
    co_return;
  }
  const auto event = list_.selected();
  if (!event) co_return;
  const int unit = to_integer16(event->unit).value_or(0);
  if (event->action == "on") {
    const auto wanted = event_level(*event);
    if (!wanted) co_return;
    int level = *wanted;
    co_await commands_.turnon(event->housecode, unit, level);
  } else if (event->action == "off") {
    co_await commands_.turnoff(event->housecode, unit);
  }
}

}  // namespace homewarden
