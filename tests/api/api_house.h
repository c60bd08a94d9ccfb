#pragma once

#include <string>

#include "tests/stories/edit_house.h"

namespace homewarden::testing {

// A house as programs see it over the network.
class ApiHouse : public EventHouse {
 public:
  // Puts a question; its number, under which web.api_answers has what is answered to it.
  int command(const std::string& device, const std::string& body,
              const std::string& from = "192.168.1.7") {
    ApiRequest request{"POST", "/devices/" + device + "/commands", "", body};
    request.from = from;
    return web.api(request);
  }
  // Before the program is opened once more: the network outlives it here.
  void forget_program() {
    EventHouse::forget_program();
    web.ApiRequestArrived = {};
  }
  // 0 before it is answered.
  unsigned status_of(int number) {
    return web.api_answers.contains(number) ? web.api_answers[number].status : 0;
  }
  // A member, as JSON, of what was answered under a number.
  std::string member(int number, const std::string& name) {
    const auto body = json.read(web.api_answers[number].body);
    const Json* found = body ? body->find(name) : nullptr;
    return found ? json.write(*found) : "(missing)";
  }
  std::string told(const std::string& path, const std::string& name) {
    return member(web.api({"GET", path}), name);
  }
  // Of a command that was asked for, as it is now.
  std::string command_now(int number, const std::string& name) {
    return told(web.api_answers[number].location.substr(kApiRoot.size()), name);
  }
};

inline std::string all_of(StreamSource& stream) {
  std::string text;
  for (std::string more = stream.next(); !more.empty(); more = stream.next()) text += more;
  return text;
}

}  // namespace homewarden::testing
