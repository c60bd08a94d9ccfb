#pragma once

#include <memory>
#include <string>

#include "tests/platform/fake_web.h"
#include "tests/stories/house.h"
#include "web/page_builder.h"
#include "web/request_handler.h"
#include "web/web_server.h"

namespace homewarden::testing {

// A house with a web server and small templates.
class WebHouse : public House {
 public:
  static constexpr const char* kNormal =
      "<html><room1>|<room2>|<ROOM3>|<room4>\r\n<room>:<dev0><dev1><dev2><DEV9></html>\r\n";

  explicit WebHouse(const std::string& room_list =
                        "Kitchen~~~\r\nLiving Room~~~\r\nKitchen~Table Lamp~A~3\r\n"
                        "Living Room~Table Lamp~A~4\r\nKitchen~Kettle~B~12\r\n")
      : House(room_list) {
    files.contents[file("html/index.html")] = kNormal;
    files.contents[file("html/wmcindex.html")] = ten_foot_template();
    settings.write("type", "KitchenTableLamp", "bulb");
    settings.write("type", "LivingRoomTableLamp", "bulb");
    FrmMain& main = open_connected();
    commands.carried_out.connect([](const std::string&, int, int) {});
    server = std::make_unique<WebServer>(main, frm_server, operations, module1, settings, dialogs,
                                         files, web, window, file("html"));
    handler = std::make_unique<RequestHandler>(main, frm_server, operations, loop, module1, web,
                                               pages, commands, state);
  }

  static std::string ten_foot_template() {
    std::string page = "<body MCFocusStart=\"option1\">";
    for (int i = 1; i <= 19; ++i) {
      const std::string n = std::to_string(i);
      page += "<a href=<url" + n + "> ID=\"option" + n +
              "\" class=\"button2\" MCFocusable=\"true\"><room" + n + "></a>";
    }
    page += "<room>";
    for (int i = 1; i <= 10; ++i) {
      const std::string n = std::to_string(i);
      page += "<p ID=\"module" + n + "\" class=\"imcl1\" MCFocusable=\"true\" mrl=<mrl" + n +
              ">><dev" + std::to_string(i - 1) + ">";
    }
    return page + "\n";
  }

  // The answer to a request that waits for nothing; without its identifier.
  std::string get(const std::string& page, const std::string& query = {}) {
    const int id = web.request(page, query);
    loop.run_pending();
    const std::string start = std::to_string(id) + " ";
    if (web.answers.empty() || !web.answers.back().starts_with(start)) return "(no answer)";
    return web.answers.back().substr(start.size());
  }

  FakeWeb web;
  FrmServer frm_server;
  Operations operations{[](std::exception_ptr) { FAIL(); }};
  Module1 module1{loop, registry, services, ""};
  DeviceState state{module1};
  ListFile rooms{files, file("rmlst.hwd"), file("tc.tmp")};
  PageBuilder pages{frm_server, module1, settings, files, rooms, file("html")};
  FrmMain unused;
  DeviceCommands commands{unused, loop, module1, interface_control};
  WindowServices window{unused, operations, desktop, dialogs};
  std::unique_ptr<WebServer> server;
  std::unique_ptr<RequestHandler> handler;
};

}  // namespace homewarden::testing
