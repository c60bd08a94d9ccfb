// The house as programs read it, beside the menu of the pages.

#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

// Fails when a live page shows another order than the page that the program has sent, or loses one
// of two devices that are written alike.
TEST(HouseForPrograms, RoomsAndDevicesComeInTheOrderOfTheFile) {
  House house(
      "Attic~Lamp~C~1\r\nLounge~~~\r\nLounge~Radio~B~2\r\nLounge~Fan~B~1\r\nCellar~~~\r\n"
      "Lounge~Amp~B~4\r\nBar~~~\r\nCellar~Pump~A~9\r\nLounge~Fan~B~1\r\nno line\r\n");
  house.open_connected();
  const auto read = [&house](const std::string& path) {
    const int id = house.web.api(ApiRequest{"GET", path});
    house.loop.advance(1s);
    return *house.json.read(house.web.api_answers[id].body);
  };
  const auto names = [](const Json& list) {
    Texts found;
    for (const Json& one : *list.array()) found.push_back(*one.find("name")->text());
    return found;
  };

  const Json body = read("/house");
  EXPECT_THAT(names(*body.find("rooms")), ElementsAre("Lounge", "Cellar", "Bar", "Attic"))
      << "as in the menu, which knows no room without a line of its own";
  EXPECT_THAT(names(*body.find("rooms")->array()->front().find("devices")),
              ElementsAre("Radio", "Fan", "Amp", "Fan"));
  EXPECT_THAT(names(*read("/devices").find("devices")),
              ElementsAre("Lamp", "Radio", "Fan", "Amp", "Pump", "Fan"));
}

// Fails when pages go on saying that there is no interface after it was found.
TEST(HouseForPrograms, AnInterfaceThatIsFoundIsTold) {
  House house;
  house.open(0s);
  const int id = house.web.api(ApiRequest{"GET", "/stream"});
  house.loop.advance(60s);
  std::string all;
  for (std::string more = house.web.streams[id]->next(); !more.empty();
       more = house.web.streams[id]->next())
    all += more;
  const auto last = all.rfind("event: interface");
  ASSERT_NE(last, std::string::npos);
  EXPECT_THAT(all.substr(last, all.find("\n\n", last) - last), HasSubstr("\"ready\""));
}

}  // namespace
}  // namespace homewarden::testing
