#include "api/interface_now.h"

#include "base/code_page.h"
#include "base/text.h"

namespace homewarden {

InterfaceNow::InterfaceNow(StatusBar& status, Flags& flags, DeviceCommands& commands)
    : status_(status), flags_(flags) {
  status.panel3.changed.connect([this] { changed(); });
  flags.connected.changed.connect([this] { changed(); });
  commands.sending_to.connect([this](const std::string&, bool begins) {
    busy_ = begins;
    changed();
  });
}

std::string InterfaceNow::state() const {
  const std::string& text = status_.panel3;
  if (!flags_.connected || contains_ignoring_case(text, "no interface found")) return "none";
  if (contains_ignoring_case(text, "unplugged")) return "away";
  return busy_ ? "busy" : "ready";
}

Json InterfaceNow::json() const {
  const std::string now = state();
  return Json::Object{{"state", now},
                      {"text", to_utf8(status_.panel3.get())},
                      {"line_is_up", now == "ready" || now == "busy"}};
}

}  // namespace homewarden
