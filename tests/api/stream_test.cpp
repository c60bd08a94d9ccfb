// What the stream of changes tells, and the ids by which it names the devices.

#include "api/change_log.h"
#include "core/version.h"
#include "tests/api/api_house.h"

namespace homewarden::testing {
namespace {

class StreamStory : public ::testing::Test {
 protected:
  void open(int hour) {
    house.open_connected_at(hour, 0);
    stream = house.web.streams[house.web.api({"GET", "/stream"})];
    EXPECT_THAT(stream->next(), StartsWith("retry: 2000\nid: "));
  }
  // The last that the stream has to say of a device.
  std::string last_word(const std::string& id) {
    const std::string text = all_of(*stream);
    const std::size_t place = text.rfind(R"(data: {"id":")" + id + "\"");
    if (place == std::string::npos) return "nothing";
    const auto data = house.json.read(text.substr(place + 6, text.find('\n', place) - place - 6));
    return house.json.write(*data->find("level")) + " " + house.json.write(*data->find("source"));
  }
  std::string name_of(const std::string& id) { return house.told("/devices/" + id, "name"); }

  ApiHouse house;
  std::shared_ptr<StreamSource> stream;
};

// Fails when a screen does not hear of what somebody else did, or is told the wrong culprit.
TEST_F(StreamStory, EveryChangeIsToldWithItsSource) {
  house.content("evelst.hwd") = "Hall Lamp~B~12~40~20:01~on~daily~mtwufsr\r\n";
  house.content("macs.hlk") = "When~A4~Kitchen~Kettle~turns~on~Turn~Off~B12~Hall~Lamp\r\n";
  open(20);
  house.receive("A3", 2, 10ms);
  EXPECT_EQ(last_word("KitchenTableLamp"), R"(100 "power_line")");
  house.run_until(20, 1, 20);
  EXPECT_EQ(last_word("HallLamp"), R"(40 "event")");
  house.receive("A4", 2, 10s);
  EXPECT_EQ(last_word("HallLamp"), R"(0 "macro")");
  house.click_node("Hall");
  house.click(house.form().device[0], 5s);
  EXPECT_EQ(last_word("HallLamp"), R"(100 "window")");
  house.speech.say("off~B12");
  house.loop.advance(5s);
  EXPECT_EQ(last_word("HallLamp"), R"(0 "voice")");
  house.command("HallLamp", R"({"command": "level", "level": 70})");
  house.loop.advance(5s);
  EXPECT_EQ(last_word("HallLamp"), R"(70 "web")");
  const std::string changed = house.told("/devices/HallLamp", "changed");
  EXPECT_THAT(changed, StartsWith("\"2023-06-21T20:01:"));
  house.forget_program();
  open(23);
  EXPECT_EQ(house.told("/devices/HallLamp", "changed"), changed) << "after a restart";
  house.set_machine("HallLamp", "False");  // by another process
  house.loop.advance(2s);
  EXPECT_EQ(last_word("HallLamp"), R"(0 "elsewhere")");
  EXPECT_EQ(house.told("/devices/HallLamp", "changed"), "null");
}

// Fails when a program loses a device because somebody gave it another name, or gets the wrong one.
TEST_F(StreamStory, ADeviceKeepsItsIdWhateverBecomesOfIt) {
  open(20);
  house.click_node("Hall");
  house.form().card_order(0, CardOrder::kChange);
  house.form().change.txt_changename.text = "Porch Light";
  house.form().change.lst_changeroom.text = "Kitchen";
  house.form().change.lst_changecode.text = "C";
  house.click(house.form().change.cmd_change, 5s);
  EXPECT_EQ(house.told("/devices/HallLamp", "address"), "\"C12\"");
  EXPECT_THAT(all_of(*stream), HasSubstr("event: house\n"));
  house.content("rmlst.hwd") += "Hall~Lamp~D~1\r\n";
  house.forget_program();
  open(21);
  EXPECT_EQ(name_of("HallLamp"), "\"Porch Light\"");
  EXPECT_EQ(name_of("HallLamp-2"), "\"Lamp\"") << "the old name, another device";

  house.interface_control.mains_time = 20s;
  house.command("KitchenKettle", R"({"command": "on"})");
  const int waits = house.command("HallLamp", R"({"command": "on"})");
  house.click_node("Porch Light~C~12");
  house.dialogs.says_yes = true;
  house.press(house.form().Tree, kControlD, 40s);
  EXPECT_EQ(name_of("HallLamp"), "(missing)");
  EXPECT_EQ(house.command_now(waits, "state"), "\"dropped\"");
  house.form().undo_latest_asked();
  house.loop.advance(20s);
  EXPECT_EQ(name_of("HallLamp"), "\"Porch Light\"");
  EXPECT_EQ(name_of("HallLamp-2"), "\"Lamp\"");
}

// Fails when devices that share a key are told again and again, each with the name of the other.
TEST_F(StreamStory, OddHousesAreToldAsTheyAre) {
  house.content("rmlst.hwd") =
      "Kitchen~Table Lamp~A~3\r\nKitchen Table~Lamp~A~4\r\nK\xFC\x63he~L\"mp~B~1\r\n";
  open(20);
  EXPECT_EQ(house.told("/devices/K_fccheL_22mp", "page_key"), "\"K\xC3\xBC\x63heL\\\"mp\"");
  house.set_machine("Unknown", "True");
  house.loop.advance(3s);
  EXPECT_EQ(stream->next(), "");
  house.receive("A4", 2, 10ms);
  EXPECT_EQ(last_word("KitchenTableLamp"), R"(100 "power_line")");
}

// Fails when a reader that comes back misses an event or gets one twice without being told, or a
// slow one costs memory without end or believes what it has to be all.
TEST(ChangeLogTest, AReaderGetsWhatItMissedOrIsTold) {
  FakeWeb web;
  json::NlohmannJson json;
  ChangeLog log(json, web, "run");
  const auto publish = [&log](int count) {
    for (int i = 1; i <= count; ++i) log.publish("device", Json(i));
  };
  const auto missed = [&log](const std::string& id) { return all_of(*log.reader(id)); };
  const auto slow = log.reader("");
  slow->next();
  EXPECT_THAT(missed("run-0"),
              EndsWith("event: hello\ndata: {\"event_id\":\"run-0\",\"version\":\"" +
                       std::string(kVersion) + "\"}\n\n"));
  publish(5);
  EXPECT_THAT(missed("run-3"), EndsWith("}\n\nid: run-4\nevent: device\ndata: 4\n\n"
                                        "id: run-5\nevent: device\ndata: 5\n\n"));
  publish(4096);
  EXPECT_THAT(missed("run-5"), HasSubstr("}\n\nid: run-6\n")) << "the oldest that is kept";
  for (const char* unknown : {"run-4", "run-4102", "run-", "run-x", "other-5", "run",
                              "run-18446744073709551615", "run-18446744073709551616"})
    EXPECT_THAT(missed(unknown), HasSubstr("event: refetch\ndata: {\"reason\"")) << unknown;
  EXPECT_FALSE(slow->is_over());
  EXPECT_THAT(slow->next(), HasSubstr("event: refetch\ndata: {\"reason\":\"This reader was too"));
  EXPECT_TRUE(slow->is_over());
  EXPECT_EQ(slow->next(), "");
  EXPECT_LE(log.reader("run-5")->next().size(), 17'000U) << "it is sent much at once";
}

}  // namespace
}  // namespace homewarden::testing
