// Everybody wants the power line at once.

#include <algorithm>

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

class LineStory : public ::testing::Test {
 protected:
  LineStory() : house("") {
    std::string rooms;
    for (const char* code : {"A~1", "A~2", "A~3", "A~4", "B~1", "B~2", "B~3", "C~1", "D~1", "E~1"})
      rooms += std::string("Den~") + code[0] + code[2] + "~" + code + "\r\n";
    house.content("rmlst.hwd") = rooms;
    house.content("evelst.hwd") =
        "Den C1~C~1~100~20:01~on~daily~w\r\nDen C1~C~1~ ~20:01~off~daily~w\r\n";
    house.content("macs.hlk") =
        "When~D1~Den~D1~turns~on~Turn~Off~D1~Den~D1\r\n"
        "When~D1~Den~D1~turns~off~Turn~On~D1~Den~D1\r\n";
    house.open_connected_at(20, 0, 50);
    house.click_node("Den");
    house.interface_control.mains_time = 1700ms;
  }
  // A page that switches one of four lamps, on and off in turn.
  void ask_the_web(int n) {
    const std::string unit = std::to_string(n % 4 + 1);
    house.web.request("index.html", "A~" + unit + "~DenA" + unit +
                                        (n / 4 % 2 == 0 ? "~turnon~Den" : "~turnoff~Den"));
  }
  // The house codes in the order of the line.
  std::string codes() {
    std::string all;
    for (const std::string& entry : house.line()) all += entry[13];
    return all;
  }

  EventHouse house;
};

TEST_F(LineStory, APersonAndAnEventWaitBehindNoMoreThanOneCommandOfAFlood) {
  for (int n = 0; n < 200; ++n) ask_the_web(n);
  house.receive("D1", 2);      // and a macro that goes on for ever
  house.run_until(20, 0, 59);  // an event is due
  house.line();
  const auto web_begins = [this] {
    const Texts& log = house.interface_control.line_log;
    return !log.empty() && log.back()[13] == 'A';
  };
  ASSERT_TRUE(house.loop.advance_until(web_begins, 10s));
  for (std::size_t slot = 0; slot < 10; ++slot)  // three presses at once
    if (house.form().devicename[slot].caption.get().starts_with("B"))
      house.click(house.form().device[slot]);
  const std::string before = codes();
  house.loop.advance(20s);
  const std::string line = before + codes();
  const auto webs_before = [&line](char code, int count) {
    std::size_t place = 0;
    for (; count > 0; --count) place = line.find(code, place) + 1;
    return std::count(line.begin(), line.begin() + static_cast<long>(place), 'A');
  };
  ASSERT_EQ(std::count(line.begin(), line.end(), 'B'), 3) << line;
  ASSERT_EQ(std::count(line.begin(), line.end(), 'C'), 2) << line;
  EXPECT_LE(webs_before('C', 1), 1) << line;
  EXPECT_LE(webs_before('B', 3), 1) << line << ": presses wait from when they are made";
  EXPECT_GE(std::count(line.begin(), line.end(), 'A'), 3) << line << ": the web starves";

  house.loop.advance(120s);
  const std::string rest = codes();
  EXPECT_GE(std::count(rest.begin(), rest.end(), 'D'), 20) << rest << ": the macro starves";
  EXPECT_GE(std::count(rest.begin(), rest.end(), 'A'), 20) << rest << ": the web starves";
}

}  // namespace
}  // namespace homewarden::testing
