// The background service: the same house without a face, and how it gives way to the window.

#include "core/program/service_program.h"
#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

class ServiceHouse : public EventHouse {
 public:
  using EventHouse::EventHouse;

  ServiceProgram& serve(Time length = 2s) {
    service_ = std::make_unique<ServiceProgram>(
        house_platform(kFolder), [](std::exception_ptr) { ADD_FAILURE() << "something escaped"; });
    service_->start();
    loop.advance(length);
    return *service_;
  }
  void terminate(Time length = 0s) {
    service_->frm_main.close_requested();
    loop.advance(length);
  }
  std::string told() { return service_->frm_main.Statusbar.panel2; }

 private:
  std::unique_ptr<ServiceProgram> service_;
};

const char* const kPorch = "Hall Lamp~B~12~100~12:01~on~daily~mtwufsr~\r\n";

TEST(ServiceStory, RunsTheHouseAndStepsAsideWithinASecondOfTheFlag) {
  ServiceHouse house(kPorch);
  house.loop.set_wall_clock(2023, 6, 21, 12, 0, 23);
  house.set_machine("closeengine", "True");  // of a window that was killed
  house.set_machine("installing", "True");
  house.settings.write("data", "left", "1507.5");
  house.content("temp.txt") = "half a line";
  house.serve();
  EXPECT_EQ(house.machine("closeengine"), "False") << "it would take itself for unwanted";
  EXPECT_EQ(house.machine("installing"), "False");
  EXPECT_FALSE(house.files.exists(ServiceHouse::file("temp.txt"))) << "a rewrite stays unfinished";
  EXPECT_THAT(house.web.starts, SizeIs(1));
  house.run_until(12, 1, 5);
  EXPECT_THAT(house.line(), ElementsAre("Wed 12:01:00 B12 2"));
  EXPECT_EQ(house.machine("HallLamp"), "True");

  house.set_machine("closeengine", "True");
  house.loop.advance(1500ms);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_EQ(house.notes().back(), "close");
  EXPECT_EQ(house.machine("closeengine"), "True") << "the window's mark is gone";
  EXPECT_EQ(house.settings.read("data", "left", ""), "1507.5");
  EXPECT_EQ(house.settings.read("data", "state", "none"), "none");
}

// Catches: screens that stay wrong without the window when somebody writes into the store.
TEST(ServiceStory, TellsTheStreamWhatAnotherProcessHasRecorded) {
  ServiceHouse house;
  house.serve();
  const auto stream = house.web.streams[house.web.api({"GET", "/stream"})];
  house.set_machine("HallLamp", "True");
  house.loop.advance(2s);
  std::string told;
  for (std::string more = stream->next(); !more.empty(); more = stream->next()) told += more;
  EXPECT_THAT(told, HasSubstr(R"("source":"elsewhere")"));
  house.terminate(5s);
}

// Catches: a flag that both wrote at the same moment, so that window and service keep the house.
TEST(ServiceStory, TheWindowsLockIsEnoughToStepAside) {
  ServiceHouse house;
  house.serve();
  house.counterpart.others = 1;
  house.loop.advance(1s);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_EQ(house.machine("closeengine"), "False");
}

TEST(ServiceStory, BesideAWindowOrAnotherServiceItEndsAfterFiveSecondsWithoutAMark) {
  for (const bool window : {true, false}) {
    ServiceHouse house;
    house.set_machine("closeengine", "as it was");
    (window ? house.counterpart : house.instance).others = 2;
    house.serve(4999ms);
    EXPECT_FALSE(house.loop.has_quit());
    house.loop.advance(1ms);
    EXPECT_TRUE(house.loop.has_quit());
    EXPECT_THAT(house.told(), HasSubstr(window ? "The window has the house" : "running already"));
    EXPECT_EQ(house.machine("closeengine"), "as it was");
    EXPECT_THAT(house.notes(), IsEmpty());
    EXPECT_THAT(house.web.starts, IsEmpty());
  }
}

TEST(ServiceStory, KeepsTheDelayAndEndsInTheMiddleOfItWithoutAMark) {
  ServiceHouse house;
  house.set_delayed();
  house.serve(20999ms);
  EXPECT_THAT(house.web.starts, IsEmpty());
  house.loop.advance(2ms);
  EXPECT_THAT(house.web.starts, SizeIs(1));

  for (const bool window : {true, false}) {
    ServiceHouse short_lived;
    short_lived.set_delayed();
    short_lived.set_machine("closeengine", "as it was");
    short_lived.serve(10s);
    if (window)
      short_lived.counterpart.others = 1;
    else
      short_lived.terminate();
    short_lived.loop.advance(1s);
    EXPECT_TRUE(short_lived.loop.has_quit());
    EXPECT_EQ(short_lived.machine("closeengine"), "as it was");
    EXPECT_THAT(short_lived.notes(), IsEmpty());
  }
}

TEST(ServiceStory, WhatComesFromTheLineAtTheEndIsRecordedAndItsMacrosSentBeforeThePortCloses) {
  ServiceHouse house;
  house.content("macs.hlk") = "When~A3~Table~Lamp~turns~on~Turn~On~B12~Hall~Lamp\r\n";
  house.serve();
  house.notes();
  house.interface_control.receives = true;
  house.terminate(2s);
  EXPECT_THAT(house.notes(), IsEmpty()) << "closed while a wall switch was being heard";
  house.interface_control.receives = false;
  house.receive("A3", kX10On, 5s);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
  EXPECT_EQ(house.machine("HallLamp"), "True") << "the macro's command went with the queue";
  EXPECT_EQ(house.notes().back(), "close");
}

TEST(ServiceStory, ATerminationFinishesTheCommandThenClosesServerAndPort) {
  ServiceHouse house(kPorch);
  house.loop.set_wall_clock(2023, 6, 21, 12, 0, 50);
  house.serve();
  house.interface_control.mains_time = 8s;
  house.run_until(12, 1, 2);
  house.notes();
  house.terminate(4s);
  EXPECT_FALSE(house.loop.has_quit());
  EXPECT_TRUE(house.web.Listening()) << "a browser that waits gets no answer";
  EXPECT_THAT(house.notes(), IsEmpty()) << "the port was closed under the command";
  house.loop.advance(6s);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_FALSE(house.web.Listening());
  EXPECT_EQ(house.machine("HallLamp"), "True") << "sent and not recorded";

  ServiceHouse stuck(kPorch);
  stuck.loop.set_wall_clock(2023, 6, 21, 12, 0, 50);
  stuck.serve();
  stuck.interface_control.mains_time = 1h;
  stuck.run_until(12, 1, 2);
  stuck.terminate(32s);
  EXPECT_TRUE(stuck.loop.has_quit()) << "an interface that hangs keeps the service from ending";
}

}  // namespace
}  // namespace homewarden::testing
