// Whole pages on the templates that people get, against pages that were written down before.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/web/web_house.h"

namespace homewarden::testing {
namespace {

std::string content_of(const std::string& file) {
  std::ifstream stream(std::string(HOMEWARDEN_SOURCES) + "/" + file, std::ios::binary);
  EXPECT_TRUE(stream) << file;
  return {std::istreambuf_iterator<char>(stream), {}};
}

class ThreeRooms : public WebHouse {
 public:
  ThreeRooms()
      : WebHouse(
            "Kitchen~~~\r\nLiving Room~~~\r\nCaf\xe9 & Bar~~~\r\nKitchen~Kettle~B~12\r\n"
            "Living Room~Table Lamp~A~3\r\nLiving Room~Ceiling Fan~A~4\r\n"
            "Living Room~H\xe4ngelampe~A~16\r\nCaf\xe9 & Bar~Radio~P~1\r\n") {
    for (const char* page : {"html/index.html", "html/wmcindex.html"})
      files.contents[file(page)] = content_of(page);
    settings.write("type", "LivingRoomTableLamp", "bulb");
    settings.write("type", "LivingRoomCeilingFan", "fan");
    settings.write("type", "LivingRoomH\xe4ngelampe", "bulb2");
    set_machine("LivingRoomCeilingFan", "True");
  }
};

TEST(WholePage, TheLivingRoomInABrowser) {
  ThreeRooms house;
  EXPECT_EQ(house.get("index.html", "loadroomLivingRoom"),
            content_of("tests/web/expected/living_room.html"));
}

TEST(WholePage, TheLivingRoomTenFeetAwayAfterItsSecondDeviceWasSwitched) {
  ThreeRooms house;
  house.set_machine("lastroom", "LivingRoom");
  house.set_machine("lastdev", "2");
  EXPECT_EQ(house.get("wmcindex.html", "loadroomLivingRoom"),
            content_of("tests/web/expected/living_room_ten_foot.html"));
}

}  // namespace
}  // namespace homewarden::testing
