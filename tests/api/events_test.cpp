// Events, macros and profiles as programs read and change them.

#include "api/event_answers.h"
#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

const std::string kDaily = "Hall Lamp~B~12~40~07:30~on~daily~mtwufsr";
const std::string kOff = "Hall Lamp~B~12~ ~23:00~off~daily~mtwufsr";
const std::string kOnce = "Kitchen Kettle~A~4~100~12:00~on~once~mtwufsr";

class ProgramsStory : public ::testing::Test {
 protected:
  ProgramsStory() : house(kDaily + "\r\n" + kOff + "\r\n") {}

  ApiAnswer ask(const std::string& method, const std::string& path, const std::string& body = "",
                House::Time length = 20s) {
    ApiRequest request{method, path};
    request.body = body;
    const int id = house.web.api(request);
    house.loop.advance(length);
    return house.web.api_answers[id];
  }
  Json get(const std::string& path) { return *house.json.read(ask("GET", path, "", 0s).body); }
  Json event(const std::string& line) { return get("/events/" + event_id(*parse_event(line))); }
  ApiAnswer switch_event(const std::string& line, bool on) {
    return ask("PUT", "/events/" + event_id(*parse_event(line)),
               on ? R"({"enabled": true})" : R"({"enabled": false})");
  }
  std::string file(const std::string& name) {
    const auto found = house.files.contents.find(House::file(name));
    return found == house.files.contents.end() ? "(missing)" : found->second;
  }

  EventHouse house;
};

// Fails when an event is lost or doubled, runs although it is off, or comes back by itself.
TEST_F(ProgramsStory, AnEventThatIsOffDoesNotRunUntilItIsOnAgain) {
  house.open_connected_at(7, 0);
  EXPECT_EQ(*event(kDaily).find("next"), Json("2023-06-21T07:30"));
  EXPECT_EQ(switch_event(kDaily, false).status, 200U);
  EXPECT_THAT(house.event_lines(), ElementsAre(kOff));
  EXPECT_EQ(file("Standard (off).txt"), kDaily + "\r\n");
  EXPECT_THAT(house.form().ListView1.rows.get(), SizeIs(1));
  EXPECT_EQ(*event(kDaily).find("enabled"), Json(false));
  EXPECT_TRUE(event(kDaily).find("next")->is_null());
  EXPECT_THAT(*get("/events").find("events")->array(), SizeIs(2));
  house.run_until(7, 31);
  EXPECT_THAT(house.notes(), IsEmpty());

  EXPECT_EQ(switch_event(kDaily, true).status, 200U);
  EXPECT_THAT(house.event_lines(), ElementsAre(kOff, kDaily));
  EXPECT_EQ(file("Standard (off).txt"), "(missing)");
  EXPECT_EQ(switch_event(kDaily, true).status, 200U) << "one that is on stays so";
  EXPECT_THAT(house.event_lines(), SizeIs(2));
  EXPECT_EQ(*event(kDaily).find("next"), Json("2023-06-22T07:30"));
}

// Fails when a kill between the two files loses the event, or leaves it where it cannot be changed.
TEST_F(ProgramsStory, AnEventThatAStopLeftInBothListsIsOn) {
  house.content("Standard (off).txt") = kDaily + "\r\n";
  house.open_connected_at(7, 0);
  EXPECT_THAT(*get("/events").find("events")->array(), SizeIs(2));
  EXPECT_EQ(*event(kDaily).find("enabled"), Json(true));
  switch_event(kDaily, true);
  EXPECT_EQ(file("Standard (off).txt"), "(missing)");
  house.content("Standard (off).txt") = kDaily + "\r\n";
  switch_event(kDaily, false);
  EXPECT_EQ(file("Standard (off).txt"), kDaily + "\r\n");
  EXPECT_THAT(house.event_lines(), ElementsAre(kOff));
}

// Fails when a file that cannot be written or an editor that is open costs an event.
TEST_F(ProgramsStory, WhatTheFilesOrTheWindowDoNotAllowIsRefused) {
  house.open_connected_at(7, 0);
  house.select_event("Hall Lamp");
  house.form().ListView1.double_click();
  EXPECT_EQ(switch_event(kDaily, false).status, 409U);
  EXPECT_EQ(switch_event(kOff, false).status, 200U) << "nobody edits that one";
  house.click(house.form().Command6, 10s);
  EXPECT_THAT(house.event_lines(), ElementsAre(kDaily)) << "it is saved as it was";

  house.files.unreadable.insert(House::file("Standard (off).txt"));
  const ApiAnswer refused = switch_event(kDaily, false);
  EXPECT_EQ(refused.status, 409U);
  EXPECT_THAT(refused.body, HasSubstr("Standard (off).txt"));
  EXPECT_THAT(house.event_lines(), ElementsAre(kDaily));
  house.files.unreadable.clear();
  EXPECT_EQ(ask("PUT", "/events/e0000000000000000", R"({"enabled": true})").status, 404U);
  EXPECT_EQ(ask("PUT", "/events/" + event_id(*parse_event(kOff)), R"({"on": true})").status, 400U);
}

// Fails when a switched profile takes events with it that are off, or shows them to nobody.
TEST_F(ProgramsStory, EventsThatAreOffBelongToTheirProfile) {
  house.open_connected_at(7, 0);
  switch_event(kDaily, false);
  EXPECT_EQ(ask("PUT", "/profiles/active", R"({"name": "Holiday"})").status, 200U);
  EXPECT_EQ(house.form().com_profile.text.get(), "Holiday");
  EXPECT_THAT(house.form().ListView1.rows.get(), IsEmpty());
  EXPECT_FALSE(house.form().frm_event.visible.get()) << "nobody at the window asked for it";
  EXPECT_THAT(*get("/events").find("events")->array(), IsEmpty());
  EXPECT_EQ(ask("PUT", "/profiles/active", R"({"name": "Christmas 2"})").status, 404U);
  ask("PUT", "/profiles/active", R"({"name": "Standard"})");
  EXPECT_THAT(*get("/events").find("events")->array(), SizeIs(2));
  EXPECT_EQ(*get("/profiles").find("active"), Json("Standard"));
}

// Fails when readers of the stream do not hear of what the window or somebody's editor changed.
TEST_F(ProgramsStory, ChangesAreToldWhoeverMakesThem) {
  house.open_connected_at(7, 0);
  house.run_until(7, 2);
  const int before = house.web.stream_calls;
  house.run_until(7, 4);
  EXPECT_EQ(house.web.stream_calls, before) << "nothing has changed";
  house.content("evelst.hwd") += kOnce + "\r\n";
  house.run_until(7, 5, 1);
  EXPECT_EQ(house.web.stream_calls, before + 1) << "events";
  house.content("macs.hlk") = "Hall Lamp~B~12~2~A~4~2~Hall Lamp~Kitchen Kettle\r\n";
  house.run_until(7, 6, 1);
  EXPECT_EQ(house.web.stream_calls, before + 2) << "macros";
}

}  // namespace
}  // namespace homewarden::testing
