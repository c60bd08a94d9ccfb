#include "automation/run_event_now.h"

#include <utility>

#include "automation/event_input.h"
#include "automation/event_target.h"
#include "core/asking.h"

namespace homewarden {

RunEventNow::RunEventNow(EventPanel& panel, Operations& operations, Dialogs& dialogs,
                         EventList& list, DeviceCommands& commands)
    : panel_(panel), dialogs_(dialogs), list_(list), commands_(commands) {
  panel.mnu_runeventnow.click.connect([this, &operations] { operations.start(run()); });
  panel.cmd_runnow.click.connect([this, &operations] { operations.start(run_boxes()); });
}

Task<void> RunEventNow::run() {
  if (panel_.ListView1.rows.get().empty()) {
    co_await tell(dialogs_, "You dont have any events to run", "No events");
    co_return;
  }
  const auto event = list_.selected();
  if (event) co_await carry_out(*event);
}

Task<void> RunEventNow::run_boxes() {
  CheckedInput checked = check_input(input_in(panel_));
  if (auto* wrong = std::get_if<std::string>(&checked)) {
    std::string text = std::move(*wrong);
    co_await tell(dialogs_, std::move(text), "Please check", MessageIcon::kExclamation);
    co_return;
  }
  EventRecord event = std::get<EventRecord>(std::move(checked));
  co_await carry_out(std::move(event));
}

Task<void> RunEventNow::carry_out(EventRecord event) {
  const auto order = order_of(event);
  if (!order) co_return;
  if (order->on)
    co_await commands_.turnon(target_of(event), order->level, Source::kWindow);
  else
    co_await commands_.turnoff(target_of(event), Source::kWindow);
}

}  // namespace homewarden
