#include "core/house/interface_overview.h"

#include <string>
#include <string_view>

#include "base/text.h"
#include "core/settings.h"

namespace homewarden {
namespace {

constexpr const char* kPrefix = "STATUS: ";
constexpr const char* kReady = "STATUS: Ready";
constexpr std::string_view kTrying = "Please wait, looking for interface on com port ";
constexpr int kLastPort = 15;
constexpr const char* kPorts = "serial ports";  // the notice about ports that may not be opened

// What stands between quotation marks in the notice: a command that helps.
std::string command_in(const std::string& notice) {
  const auto begin = notice.find('"');
  const auto end = notice.find('"', begin + 1);
  if (begin == std::string::npos || end == std::string::npos) return "";
  return notice.substr(begin + 1, end - begin - 1);
}

std::string help_for(InterfaceCondition condition, const std::string& refused) {
  switch (condition) {
    case InterfaceCondition::kUnplugged:
      return "Plug it in again, it is found by itself. Timed events wait until then.";
    case InterfaceCondition::kMissing:
      return "Plug it into the mains and into this computer. It is found by itself.";
    case InterfaceCondition::kRefused:
      return refused;
    case InterfaceCondition::kLooking:
    case InterfaceCondition::kConnected:
    case InterfaceCondition::kTrouble:
      break;
  }
  return "";
}

}  // namespace

InterfaceOverview::InterfaceOverview(InterfacePanel& panel, HomePanel& home, StatusBar& status,
                                     const Flags& flags, Module1& module1, Notices& notices)
    : panel_(panel), status_(status), flags_(flags), module1_(module1), notices_(notices) {
  status.panel3.changed.connect([this] { show(); });
  // The text of a connection is older than the flag that says so.
  status.panel2.changed.connect([this] { show(); });
  notices.changed.connect([this](const std::string&, const std::string&) { show(); });
  panel.cmd_look.click.connect([&home] { home.Label51.click(); });
  show();
}

InterfaceCondition InterfaceOverview::condition() const {
  const std::string& state = status_.panel3;
  if (state == kReady)
    return flags_.connected ? InterfaceCondition::kConnected : InterfaceCondition::kLooking;
  if (state.empty()) return InterfaceCondition::kLooking;
  if (state.starts_with("STATUS: No interface found"))
    return notices_.of(kPorts).empty() ? InterfaceCondition::kMissing
                                       : InterfaceCondition::kRefused;
  if (state.find("unplugged") != std::string::npos) return InterfaceCondition::kUnplugged;
  return InterfaceCondition::kTrouble;
}

InterfacePanel::Search InterfaceOverview::search(InterfaceCondition condition) const {
  const std::string& state = status_.panel2;
  if (condition == InterfaceCondition::kConnected || !state.starts_with(kTrying)) return {};
  return {to_integer16(state.substr(kTrying.size())).value_or(0), kLastPort};
}

void InterfaceOverview::show() {
  const InterfaceCondition now = condition();
  const std::string port =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "port", "none");
  std::string words;
  switch (now) {
    case InterfaceCondition::kLooking:
      words = "Looking for the interface";
      break;
    case InterfaceCondition::kConnected:
      words = "Interface connected";
      if (flags_.connected && port != "none") words += " on port " + port;
      break;
    case InterfaceCondition::kTrouble:
      words = status_.panel3.get().starts_with(kPrefix) ? status_.panel3.get().substr(8)
                                                        : status_.panel3.get();
      break;
    case InterfaceCondition::kUnplugged:
      words = "The interface is unplugged.";
      break;
    case InterfaceCondition::kMissing:
      words = "No interface found, looking again";
      break;
    case InterfaceCondition::kRefused:
      words = "You may not use the serial port yet";
      break;
  }
  panel_.search = search(now);
  const std::string refused = notices_.of(kPorts);
  panel_.lab_interface.caption = std::move(words);
  panel_.lab_interfacehelp.caption = help_for(now, refused);
  panel_.lab_command.caption =
      now == InterfaceCondition::kRefused ? command_in(refused) : std::string();
  panel_.cmd_look.visible = now == InterfaceCondition::kMissing;  // unplugged, the banner has it
  if (now == InterfaceCondition::kConnected) panel_.lab_notfound.visible = false;
  panel_.condition = now;
}

}  // namespace homewarden
