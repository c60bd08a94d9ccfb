#pragma once

#include <deque>
#include <optional>
#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "platform/web_server_control.h"
#include "ui/controls.h"
#include "ui/frm_server.h"
#include "web/page_builder.h"
#include "web/page_cache.h"
#include "web/request_grammar.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"

namespace homewarden {

// Answers the requests of the web server: what switches is carried out one after the other, what
// does not is answered at once, also while a device is being switched. The form is busy while
// either is going on; its page is the one that is being built.
class RequestHandler {
 public:
  RequestHandler(StatusBar& status, FrmServer& form, Operations& operations, EventLoop& loop,
                 Module1& module1, WebServerControl& web, PageBuilder& pages, PageCache cache,
                 HouseIndex& house, DeviceCommands& commands, DeviceState& state);

  // For the end: no switch begins any more; those that wait are not answered. The one that is being
  // carried out is.
  void take_no_more_switches() { takes_switches_ = false; }

 private:
  struct Request {
    int id;
    std::string page;
    std::string query;  // decoded
  };

  void arrived(Operations& operations, int id, const std::string& page);
  Task<void> carry_out_switches();
  Task<void> switch_device(int id, SwitchQuery device, bool on, PageFamily family);
  void answer(int id, PageFamily family, const std::optional<std::string>& room);
  // The page of a room, or the home page, as it was built before or anew.
  void show(PageFamily family, const std::optional<std::string>& room);
  void show_no_states(PageFamily family);
  void begin_page(PageFamily family);
  void show_home(PageFamily family);
  void show_room(PageFamily family, const std::string& room);

  StatusBar& status_;
  FrmServer& form_;
  EventLoop& loop_;
  Module1& module1_;
  WebServerControl& web_;
  PageBuilder& pages_;
  PageCache cache_;
  HouseIndex& house_;
  DeviceCommands& commands_;
  DeviceState& state_;
  std::deque<Request> switches_;  // not begun
  bool switching_ = false;
  bool takes_switches_ = true;
};

}  // namespace homewarden
