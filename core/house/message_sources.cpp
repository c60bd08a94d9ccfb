#include "core/house/message_sources.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

// Of a house code from elsewhere, which may be anything.
constexpr std::size_t kLongestCode = 8;

// "text. Undo": what the page shows as a link.
std::string without_undo(const std::string& caption) {
  constexpr std::string_view kUndo = ". Undo";
  return caption.ends_with(kUndo) ? caption.substr(0, caption.size() - kUndo.size()) : caption;
}

}  // namespace

Task<Answer> NotedDialogs::message_box(Message message) {
  if (message.buttons == MessageButtons::kOk) {
    const bool failed =
        message.icon == MessageIcon::kCritical || message.icon == MessageIcon::kExclamation;
    std::string text = message.text;
    std::erase(text, '\r');
    std::replace(text.begin(), text.end(), '\n', ' ');
    messages_.note(std::move(text), failed);
  }
  const Answer answer = co_await dialogs_.message_box(std::move(message));
  co_return answer;
}

Task<std::optional<std::string>> NotedDialogs::input_box(Question question) {
  auto typed = co_await dialogs_.input_box(std::move(question));
  co_return typed;
}

void tell_failed_commands(DeviceCommands& commands, const HouseIndex& house, Messages& messages) {
  commands.tried.connect([&house, &messages](const SwitchTarget& target, bool sent) {
    if (sent) return;
    const Device* device = house.by_key(target.key);
    messages.fail("Not sent: " + (device ? device->room + ", " + device->name
                                         : on_one_line(target.house_code, kLongestCode) +
                                               std::to_string(target.unit)));
  });
}

void note_events(EventPanel& panel, EventList& events, const ProfileSwitch& profiles,
                 Messages& messages) {
  events.replaced.connect(
      [&profiles, &messages] { messages.note("The profile is now " + profiles.active()); });
  const auto offered = std::make_shared<Messages::Id>(0);
  panel.lab_undo.visible.changed.connect([&panel, &messages, offered] {
    if (panel.lab_undo.visible)
      *offered = messages.note(without_undo(panel.lab_undo.caption), false,
                               [&panel] { panel.lab_undo.click(); });
    else
      messages.withdraw_undo(std::exchange(*offered, 0));
  });
}

}  // namespace homewarden
