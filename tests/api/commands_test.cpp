// Commands of programs: their order, what takes the place of what, and how each ends.

#include "tests/api/api_house.h"

namespace homewarden::testing {
namespace {

const std::string kOn = R"({"command": "on"})";
const std::string kOnAndWait = R"({"command": "on", "wait": true})";
const std::string kOff = R"({"command": "off"})";
const std::string kToggle = R"({"command": "toggle"})";
const std::string kRepeat = R"({"command": "repeat"})";
std::string level(int percent) {
  return R"({"command": "level", "wait": true, "level": )" + std::to_string(percent) + "}";
}

class RemoteStory : public ::testing::Test {
 protected:
  RemoteStory() {
    std::string& rooms = house.content("rmlst.hwd") = "Hall~Kettle~B~1\r\nHall~Ghost~Q~99\r\n";
    for (int unit = 1; unit <= 10; ++unit) {
      const std::string number = std::to_string(unit);
      rooms += "Hall~Lamp " + number + "~A~" + number + "\r\n";
      house.settings.write("type", "HallLamp" + number, "bulb");
    }
    house.open_connected_at(20, 0);
    house.interface_control.mains_time = 400ms;
  }
  // What went out by then, without the options of the interface.
  Texts line_after(House::Time length) {
    house.loop.advance(length);
    Texts sent;
    for (const std::string& note : house.notes()) sent.push_back(note.substr(5, note.size() - 11));
    return sent;
  }
  int lamp(int number, const std::string& body) {
    return house.command("HallLamp" + std::to_string(number), body);
  }
  std::string state(int number) { return house.command_now(number, "state"); }

  ApiHouse house;
};

// Fails when a command is lost, or overtakes one that was asked for before.
TEST_F(RemoteStory, TenCommandsAtOnceGoOutInTheirOrder) {
  std::vector<int> numbers;
  Texts expected;
  for (int unit = 1; unit <= 10; ++unit) {
    numbers.push_back(lamp(unit, kOn));
    expected.push_back("A" + std::to_string(unit) + " 2 20");
  }
  EXPECT_THAT(house.told("/devices/HallLamp9", "pending"), HasSubstr(R"("state":"waiting","on")"));
  EXPECT_EQ(line_after(10s), expected);
  for (const int number : numbers) EXPECT_EQ(state(number), "\"done\"");
  EXPECT_EQ(house.told("/devices/HallLamp9", "pending"), "null");
}

// Fails when a slider floods the line, loses its turn with each move, or swallows what came
// between.
TEST_F(RemoteStory, ANewerLevelTakesThePlaceOfOneThatWaits) {
  lamp(1, kOn);
  const int older = lamp(2, level(30));
  lamp(3, kOn);
  lamp(2, level(60));
  EXPECT_EQ(line_after(10s), Texts({"A1 2 20", "A2 2 0", "A2 5 100", "A2 4 40", "A3 2 20"}));
  EXPECT_EQ(house.member(older, "state"), "\"dropped\"");
  EXPECT_THAT(house.member(older, "detail"), HasSubstr("A newer level"));
  for (const std::string& body : {kOff, level(30), kOff, level(0)}) lamp(2, body);
  EXPECT_EQ(line_after(10s),
            Texts({"A2 3 20", "A2 2 0", "A2 5 100", "A2 4 70", "A2 3 20", "A2 3 20"}));
}

// Fails when somebody who presses twice before the line is free does not end where they began.
TEST_F(RemoteStory, AToggleGoesByWhatTheDeviceComesTo) {
  for (const std::string& body : {kOn, kToggle, kToggle}) lamp(1, body);
  for (const char* body : {kOn.c_str(), R"({"command": "up"})", kToggle.c_str()}) lamp(2, body);
  EXPECT_EQ(line_after(10s),
            Texts({"A1 2 20", "A1 3 20", "A1 2 20", "A2 2 20", "A2 5 20", "A2 3 20"}));
}

// Fails when a program is told of a success that was none, or cannot ask for it again.
TEST_F(RemoteStory, WhatIsNotSentIsSaidAndCanBeRepeated) {
  house.interface_control.fails = true;
  const int failed = lamp(1, level(40));
  EXPECT_EQ(line_after(5s), Texts{"A1 2 0"});
  EXPECT_EQ(house.member(failed, "state"), "\"not_sent\"");
  EXPECT_EQ(house.told("/devices/HallLamp1", "not_sent"), R"({"on":true,"level":40})");
  house.interface_control.fails = false;
  lamp(1, kRepeat);
  EXPECT_EQ(line_after(5s).back(), "A1 4 60");
  EXPECT_EQ(house.told("/devices/HallLamp1", "not_sent"), "null");
  EXPECT_EQ(house.status_of(lamp(1, kRepeat)), 422U);
  EXPECT_EQ(house.status_of(lamp(1, level(101))), 400U);
  EXPECT_EQ(house.status_of(house.command("HallKettle", level(40))), 422U);
  EXPECT_EQ(house.status_of(house.command("HallGhost", kOn)), 422U) << "it has no address";
}

// Fails when who waits is answered too soon, never, or waits in what is gone with the program.
TEST_F(RemoteStory, WhoWaitsIsAnsweredAtTheEndOrAfterHalfAMinute) {
  lamp(1, kOn);
  const int waits = lamp(2, kOnAndWait);
  house.loop.advance(700ms);
  EXPECT_EQ(house.status_of(waits), 0U);
  house.loop.advance(200ms);
  EXPECT_EQ(house.member(waits, "state"), "\"done\"");
  house.interface_control.mains_time = 40s;
  const int slow = lamp(3, kOnAndWait);
  house.loop.advance(29s);
  EXPECT_EQ(house.status_of(slow), 0U);
  house.loop.advance(2s);
  EXPECT_EQ(house.status_of(slow), 202U);
  EXPECT_EQ(house.member(slow, "state"), "\"sending\"");
  lamp(4, kOnAndWait);
  house.forget_program();
  house.loop.advance(60s);
}

// Fails when one client can fill the line for all, or the last move of a slider is refused.
TEST_F(RemoteStory, OneAddressAndAllTogetherHaveLimits) {
  lamp(1, kOn);
  const int older = house.command("HallLamp2", level(10), "192.168.1.8");
  for (int more = 0; more < 32; ++more) EXPECT_EQ(house.status_of(lamp(3, kToggle)), 202U);
  EXPECT_EQ(house.status_of(lamp(3, kOn)), 429U);
  EXPECT_EQ(house.status_of(lamp(2, level(20))), 0U) << "it waits in the place of the other";
  house.loop.advance(0ms);
  EXPECT_EQ(house.member(older, "state"), "\"dropped\"");
  for (int other = 0; other < 95; ++other)
    house.command("HallLamp4", kOn, "192.168.1." + std::to_string(10 + other % 4));
  EXPECT_EQ(house.status_of(house.command("HallLamp4", kOn, "192.168.1.12")), 429U);
  for (int stranger = 100; stranger < 165; ++stranger)
    EXPECT_EQ(
        house.status_of(house.command("HallLamp4", kOn, "192.168.1." + std::to_string(stranger))),
        stranger < 164 ? 202U : 429U);
  house.loop.advance(200s);
  EXPECT_EQ(house.status_of(lamp(3, kOn)), 202U);
}

// Fails when the end of the program leaves a program without its answer, or sends what comes late.
TEST_F(RemoteStory, TheEndDropsWhatWaitsAndSaysSo) {
  const int first = lamp(1, kOnAndWait);
  const int waits = lamp(2, kOnAndWait);
  house.close(1ms);
  EXPECT_EQ(house.status_of(first), 202U) << "it will be sent behind the last answer";
  EXPECT_EQ(house.member(waits, "state"), "\"dropped\"");
  EXPECT_EQ(house.status_of(lamp(3, kOn)), 503U);
  EXPECT_THAT(line_after(60s), ElementsAre("A1 2 20", ::testing::_));
  EXPECT_EQ(state(first), "\"done\"");
  EXPECT_TRUE(house.loop.has_quit());
}

}  // namespace
}  // namespace homewarden::testing
