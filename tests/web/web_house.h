#pragma once

#include <string>

#include "tests/stories/house.h"

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
    open_connected();
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
};

}  // namespace homewarden::testing
