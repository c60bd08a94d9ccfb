#include "web/request_handler.h"

#include <utility>

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/settings.h"
#include "platform/waiting.h"
#include "web/refusal_page.h"
#include "web/switch_report.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;
const char* const kUnknownName =
    "No room is shown under this name. Open the house by its address, or name it on the panel "
    "Web Server of the Homewarden window";

std::optional<StatePage> state_page(const std::string& page, const std::string& query) {
  const WebRequest request = classify_request(page, decode_query(query));
  if (request.action == WebAction::kFile) return std::nullopt;
  const bool ten_foot = request.family == PageFamily::kMediaCenter;
  return StatePage{std::string(ten_foot ? kMediaCenterPage : kNormalPage),
                   ten_foot && request.action != WebAction::kHome};
}

std::string asked_by(const std::string& address) {
  return address.empty() ? "" : " (from " + address + ")";
}

bool is_switch(const WebRequest& request) {
  return request.action == WebAction::kSwitchOn || request.action == WebAction::kSwitchOff;
}

// By the address on the power line: that is what a press is for, whichever page it comes from.
std::optional<WebSwitch> what_switches(const std::string& page, const std::string& query) {
  const std::string decoded = decode_query(query);
  const WebRequest request = classify_request(page, decoded);
  if (!is_switch(request)) return std::nullopt;
  const auto device = split_switch_query(decoded, request.family);
  if (!device) return WebSwitch{};  // judged as what it may have been meant for
  const char* state = request.action == WebAction::kSwitchOn ? "on" : "off";
  return WebSwitch{to_lower(device->house) + std::to_string(device->unit) + "~" + device->key,
                   std::string(state) + (device->again ? " again" : ""),
                   "loadroom" + replace_all(device->room, "%", "%25")};
}

}  // namespace

RequestHandler::RequestHandler(StatusBar& status, FrmServer& form, Operations& operations,
                               EventLoop& loop, Module1& module1, WebServerControl& web,
                               PageBuilder& pages, PageCache cache, HouseIndex& house,
                               DeviceCommands& commands, DeviceState& state)
    : status_(status),
      form_(form),
      loop_(loop),
      module1_(module1),
      web_(web),
      pages_(pages),
      cache_(std::move(cache)),
      house_(house),
      commands_(commands),
      state_(state) {
  house.changed.connect([this] { cache_.look_again(); });
  web.SwitchRequests(what_switches);
  web.StatePages(state_page);
  web.RefusalPages(refusal_page);
  web.RequestArrived.connect(
      [this, &operations](int id, const std::string& page) { arrived(operations, id, page); });
}

// What switches nothing is answered before this returns, also while a switch is on the line.
void RequestHandler::arrived(Operations& operations, int id, const std::string& page) {
  Request request{id, page, decode_query(web_.QueryText(id, ""))};
  const WebRequest asked = classify_request(request.page, request.query);
  if (is_switch(asked)) {
    switches_.push_back(std::move(request));
    if (!switching_) operations.start(carry_out_switches());
    return;
  }
  if (asked.action == WebAction::kFile) {
    web_.SendPage(id, "", true);
    return;
  }
  std::optional<std::string> room;
  if (asked.action == WebAction::kRoom) room = room_of_query(request.query);
  answer(id, asked.family, room);
}

Task<void> RequestHandler::carry_out_switches() {
  const FlagGuard switching(switching_);
  while (takes_switches_ && !switches_.empty()) {
    const FlagGuard busy(form_.busy);
    const Request request = std::move(switches_.front());
    switches_.pop_front();
    const WebRequest asked = classify_request(request.page, request.query);
    auto device = split_switch_query(request.query, asked.family);
    std::optional<std::string> room;  // none when there is nothing to switch
    if (device) {
      room = device->room;
      const bool on = asked.action == WebAction::kSwitchOn;
      co_await switch_device(request.id, std::move(*device), on, asked.family);
      co_await module1_.stored(RegistryRoot::kLocalMachine);  // an answer is a promise
    }
    answer(request.id, asked.family, room);
  }
}

// From an empty page to the answer nothing waits, so that the form's page is of this request alone.
void RequestHandler::answer(int id, PageFamily family, const std::optional<std::string>& room) {
  std::optional<FlagGuard> busy;
  if (!form_.busy) busy.emplace(form_.busy);
  form_.page.clear();
  if (web_.UnderForeignName(id))
    show_no_states(family);
  else
    show(family, room);
  web_.SendPage(id, form_.page, false);
}

Task<void> RequestHandler::switch_device(int id, SwitchQuery device, bool on, PageFamily family) {
  if (family == PageFamily::kMediaCenter)
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "lastdev",
                      std::to_string(device.position + 1));
  // An address that somebody typed must not write other values of the machine.
  const Device* known = house_.by_key(device.key);
  if (const auto typed = known ? std::nullopt : typed_name(device.key))
    known = house_.by_key(*typed);
  SwitchTarget target{device.house, device.unit, known ? known->key() : std::string(),
                      asked_by(web_.ClientAddress(id))};
  const auto asked = loop_.uptime();
  LineTurn turn = co_await commands_.take_line(Source::kWeb);
  // Whoever pressed may have gone while others had the line.
  if (loop_.uptime() != asked && !web_.IsAwaited(id)) co_return;
  DeviceOrder order{on, kFullyOn};
  if (device.again) order = state_.not_sent(target.key).value_or(order);
  const bool sent = co_await commands_.carry_out(std::move(turn), target, order, Source::kWeb);
  if (family == PageFamily::kMediaCenter || !sent) co_return;
  status_.panel2 = switch_report(target, order.on, loop_.local_time());
  co_await pending_events(loop_);
}

void RequestHandler::show(PageFamily family, const std::optional<std::string>& room) {
  const std::string name =
      (family == PageFamily::kNormal ? "n" : "m") + (room ? "room " + *room : std::string("home"));
  const auto sources = cache_.sources(family);
  if (const std::string* built = sources ? cache_.find(name, *sources) : nullptr) {
    form_.page = *built;
    return;
  }
  begin_page(family);
  pages_.add_foot();
  if (room)
    show_room(family, *room);
  else
    show_home(family);
  if (sources) cache_.keep(name, *sources, form_.page);
}

// The home page for somebody who must see nothing of the house.
void RequestHandler::show_no_states(PageFamily family) {
  if (family == PageFamily::kMediaCenter) {
    pages_.loadhtml();
    pages_.remove_options(form_.page, 1);
    pages_.remove_modules(1);
  } else {
    pages_.loadnormhtml();
  }
  form_.page = replace_all_ignoring_case(form_.page, "<room>", kUnknownName);
  pages_.show_no_room();
}

void RequestHandler::begin_page(PageFamily family) {
  if (family == PageFamily::kMediaCenter) {
    pages_.loadhtml();
    pages_.loadtree(form_.page);
  } else {
    pages_.loadnormhtml();
    pages_.loadnormtree(form_.page);
  }
}

void RequestHandler::show_home(PageFamily family) {
  const std::string room = module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "lastroom");
  if (!room.empty()) {
    show_room(family, room);
    return;
  }
  if (family == PageFamily::kMediaCenter) pages_.remove_modules(1);
  pages_.show_no_room();
}

void RequestHandler::show_room(PageFamily family, const std::string& room) {
  if (family == PageFamily::kMediaCenter)
    pages_.loadroom(room);
  else
    pages_.loadnormroom(room);
}

}  // namespace homewarden
