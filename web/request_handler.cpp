#include "web/request_handler.h"

#include <utility>

#include "base/flag_guard.h"
#include "core/settings.h"
#include "core/time_text.h"
#include "platform/waiting.h"
#include "web/refusal_page.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;

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
  web.SwitchRequests([](const std::string& page, const std::string& query) {
    const WebAction action = classify_request(page, decode_query(query)).action;
    return action == WebAction::kSwitchOn || action == WebAction::kSwitchOff;
  });
  web.RefusalPages(refusal_page);
  web.RequestArrived.connect([this, &operations](int id, const std::string& page) {
    waiting_.push_back({id, page});
    if (!form_.busy) operations.start(answer_all());
  });
}

Task<void> RequestHandler::answer_all() {
  while (!waiting_.empty()) {
    const Request request = std::move(waiting_.front());
    waiting_.pop_front();
    bool built = false;
    {
      const FlagGuard busy(form_.busy);
      form_.page.clear();
      std::string page = request.page;
      std::string query = decode_query(web_.QueryText(request.id, ""));
      built = co_await build_page(std::move(page), std::move(query));
      if (built) web_.SendPage(request.id, form_.page, false);
    }
    if (!built) web_.SendPage(request.id, "", true);
  }
}

// False for what is a file of the document folder.
Task<bool> RequestHandler::build_page(std::string page, std::string query) {
  const WebRequest request = classify_request(page, query);
  switch (request.action) {
    case WebAction::kFile:
      co_return false;
    case WebAction::kHome:
      show(request.family, std::nullopt);
      co_return true;
    case WebAction::kRoom:
      show(request.family, room_of_query(query));
      co_return true;
    case WebAction::kSwitchOn:
    case WebAction::kSwitchOff:
      break;
  }
  auto device = split_switch_query(query, request.family);
  if (!device) {  // nothing to switch
    show(request.family, std::nullopt);
    co_return true;
  }
  const std::string room = device->room;
  const bool on = request.action == WebAction::kSwitchOn;
  co_await switch_device(std::move(*device), on, request.family);
  show(request.family, room);
  co_return true;
}

Task<void> RequestHandler::switch_device(SwitchQuery device, bool on, PageFamily family) {
  if (family == PageFamily::kMediaCenter)
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "lastdev",
                      std::to_string(device.position + 1));
  // An address that somebody typed must not write other values of the machine.
  const Device* known = house_.by_key(device.key);
  SwitchTarget target{device.house, device.unit, known ? known->key() : std::string()};
  DeviceOrder order{on, kFullyOn};
  if (device.again) order = state_.not_sent(target.key).value_or(order);
  bool sent = false;
  if (order.on)
    sent = co_await commands_.turnon(std::move(target), order.level, Source::kWeb);
  else
    sent = co_await commands_.turnoff(std::move(target), Source::kWeb);
  if (family == PageFamily::kMediaCenter || !sent) co_return;
  status_.panel2 = std::string("Internet Turned ") + (order.on ? "ON" : "OFF") +
                   " device with housecode " + device.house + std::to_string(device.unit) + " at " +
                   hh_mm_ss(loop_.local_time());
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
  if (room)
    show_room(family, *room);
  else
    show_home(family);
  if (sources) cache_.keep(name, *sources, form_.page);
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
