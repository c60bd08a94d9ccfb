// The house by the clock: what goes to the power line at which second.

#include <algorithm>

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

TEST(SchedulerStory, AWeekOfAHouse) {
  EventHouse house(
      "Hall Lamp~B~12~100~sSet:-1~on~daily~f\r\n"
      "Hall Lamp~B~12~ ~sSet:+1~off~daily~fs\r\n"
      "Kitchen Table Lamp~A~3~40~07:30~on~daily~mtwuf\r\n"
      "Kitchen Kettle~A~4~100~sRise:+3~on~once~r\r\n"
      "Kitchen Kettle~A~4~ ~23:59~Off~once~sr\r\n"
      "Kitchen Kettle~A~4~100~12:00~on~daily~\r\n");
  FrmMain& form = house.open_connected_at(23, 58);  // Wednesday night
  house.interface_control.mains_time = 800ms;
  house.loop.advance(7 * 24h);
  EXPECT_THAT(house.line(),
              ElementsAre("Thu 07:30:00 A3 2", "Thu 07:30:00 A3 5", "Thu 07:30:01 A3 4 60",
                          "Fri 07:30:00 A3 2", "Fri 07:30:00 A3 5", "Fri 07:30:01 A3 4 60",
                          "Fri 19:19:00 B12 2", "Fri 21:19:00 B12 3", "Sat 21:19:00 B12 3",
                          "Mon 07:30:00 A3 2", "Mon 07:30:00 A3 5", "Mon 07:30:01 A3 4 60",
                          "Tue 07:30:00 A3 2", "Tue 07:30:00 A3 5", "Tue 07:30:01 A3 4 60",
                          "Wed 07:30:00 A3 2", "Wed 07:30:00 A3 5", "Wed 07:30:01 A3 4 60"));
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~100~sSet:-1~on~daily~f",
                                               "Hall Lamp~B~12~ ~sSet:+1~off~daily~fs",
                                               "Kitchen Table Lamp~A~3~40~07:30~on~daily~mtwuf",
                                               "Kitchen Kettle~A~4~100~12:00~on~daily~"))
      << "a once-event goes at its first due minute, whether or not the day was its own";
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
  EXPECT_EQ(house.machine("HallLamp"), "False");
  EXPECT_THAT(form.Statusbar.panel1.get(), StartsWith("23:58:0"));
}

// "installing" would end the program at the next minute.
TEST(SchedulerStory, AnEventNamedLikeASettingOfTheProgramLeavesThatAlone) {
  EventHouse house(
      "web port~A~1~100~20:01~on~daily~mtwufsr\r\ninstalling~A~2~40~20:01~on~daily~mtwufsr\r\n");
  house.loop.set_wall_clock(2023, 6, 21, 20, 0);
  house.open_connected();
  house.run_until(20, 3);
  EXPECT_FALSE(house.loop.has_quit());
  EXPECT_EQ(house.line().size(), 4u);
  EXPECT_EQ(house.machine("webport"), "(none)");
}

TEST(SchedulerStory, StatusTextsAndOnceEventOfAMinute) {
  EventHouse house(
      "Kitchen Kettle~A~4~100~07:30~on~once~w\r\nHall Lamp~B~12~ ~07:30~off~once~s\r\n");
  FrmMain& form = house.open_connected_at(7, 29, 55);
  house.interface_control.mains_time = 800ms;
  house.status_texts.clear();
  house.run_until(7, 30, 0);
  EXPECT_EQ(house.status(), "Timer, found match with 07:30 and 07:30");
  EXPECT_TRUE(form.filebusy) << "others could change the list during a pass";
  house.run_until(7, 30, 30);
  EXPECT_THAT(
      house.status_texts,
      ElementsAre("Timer, Loading rooms list", "Timer, found match with 07:30 and 07:30",
                  "Turned ON device with housecode A4 at 07:30:00",
                  "Timer, found match with 07:30 and 07:30",
                  "Found an old event to delete, deleting now", "Old event deleted at 07:30",
                  "Found an old event to delete, deleting now", "Old event deleted at 07:30"));
  EXPECT_FALSE(form.filebusy);
  EXPECT_THAT(house.event_lines(), IsEmpty());
  EXPECT_TRUE(form.ListView1.rows.get().empty());
  EXPECT_TRUE(form.lab_noevents.visible);
  house.files.contents.erase(House::file("evelst.hwd"));
  house.run_until(7, 31, 0);
  EXPECT_EQ(house.status(), "Timer running, no events to run.");
}

TEST(SchedulerStory, NoMinuteIsLostOrCheckedTwiceInThirtyDays) {
  // Every read finds an event for each of the minutes around.
  struct EveryMinute : MemoryFiles {
    explicit EveryMinute(VirtualLoop& l) : loop(l) {}
    std::optional<std::string> read(const path& file) override {
      if (file.filename() != "evelst.hwd") return MemoryFiles::read(file);
      const LocalTime now = loop.local_time();
      std::string lines;
      for (int around = -2; around <= 2; ++around) {
        const int minute = (now.hour * 60 + now.minute + around + 1440) % 1440;
        lines += "Hall Lamp~B~12~ ~" + two_digits(minute / 60) + ":" + two_digits(minute % 60) +
                 "~off~daily~mtwufsr\r\n";
      }
      return lines;
    }
    VirtualLoop& loop;
  };
  EventHouse house("placeholder");
  EveryMinute files(house.loop);
  files.contents = house.files.contents;
  house.used_files = &files;
  house.open_connected_at(12, 0, 30, 700);
  house.loop.lateness = 7ms;  // a minute would be skipped every six days
  house.loop.advance(30 * 24h);

  const auto log = house.line();
  EXPECT_EQ(log.size(), 30u * 1440u);
  int expected = 12 * 60 + 1;
  for (const std::string& entry : log) {
    ASSERT_EQ(entry.substr(4, 5), two_digits(expected / 60) + ":" + two_digits(expected % 60));
    ASSERT_EQ(entry.substr(10, 2), "00") << "late within its minute";
    expected = (expected + 1) % 1440;
  }
}

TEST(SchedulerStory, ALongPassDelaysNoOther) {
  std::string events;
  for (int i = 0; i < 60; ++i) events += "Kitchen Kettle~A~4~100~07:30~on~daily~w\r\n";
  EventHouse house(events +
                   "Hall Lamp~B~12~100~07:31~on~daily~w\r\nHall Lamp~B~12~ ~07:32~off~daily~w\r\n");
  FrmMain& form = house.open_connected_at(7, 29, 30);
  house.interface_control.mains_time = 800ms;
  house.run_until(7, 32, 30);
  const auto log = house.line();
  EXPECT_THAT(log, Contains("Wed 07:31:00 B12 2"));
  EXPECT_THAT(log, Contains("Wed 07:32:00 B12 3"));
  EXPECT_EQ(std::count_if(log.begin(), log.end(),
                          [](const std::string& entry) { return entry.ends_with("A4 2"); }),
            60);
  EXPECT_FALSE(form.filebusy);
}

TEST(SchedulerStory, WaitsForTheFilesAndStillRunsItsOwnMinute) {
  EventHouse house("Hall Lamp~B~12~100~07:30~on~daily~w\r\nHall Lamp~B~12~ ~07:31~off~daily~w\r\n");
  FrmMain& form = house.open_connected_at(7, 29, 30);
  form.filebusy = true;
  house.run_until(7, 32, 1);
  EXPECT_THAT(house.interface_control.line_log, IsEmpty());
  form.filebusy = false;
  house.run_until(7, 32, 10);
  EXPECT_THAT(house.line(), ElementsAre("Wed 07:32:02 B12 2", "Wed 07:32:04 B12 3"))
      << "each minute's events once, in order";
}

TEST(SchedulerStory, SkippedMinutesAreMadeGoodOnceAndRepeatedOnesAreNot) {
  EventHouse house(
      "Hall Lamp~B~12~ ~02:40~off~daily~mtwufsr\r\nHall Lamp~B~12~100~02:15~on~daily~mtwufsr\r\n"
      "Kitchen Kettle~A~4~100~03:00~on~daily~mtwufsr\r\n"
      "Kitchen Table Lamp~A~3~40~01:59~on~daily~mtwufsr\r\n");
  house.loop.set_wall_clock(2023, 3, 26, 1, 58, 30);
  house.open();
  house.loop.set_wall_clock(2023, 3, 26, 2, 0, 0);  // before the clock of the house ticks
  house.run_until(2, 0, 30);
  EXPECT_THAT(house.line(), SizeIs(3)) << "a jump in the first seconds lost an event";
  house.loop.set_wall_clock(2023, 3, 26, 3, 0, 20);  // asleep for an hour
  house.loop.advance(10s);
  EXPECT_THAT(house.line(), ElementsAre("Sun 03:00:20 B12 3", "Sun 03:00:21 A4 2"))
      << "the last command of each device, at once";
  EXPECT_EQ(
      house.status(),
      "Caught up on 1 event of the time from 02:01 to 02:59, which the clock skipped: Hall Lamp "
      "off (02:40). Left out: Hall Lamp on (02:15), followed by a later one");

  house.run_until(3, 5, 0);
  house.loop.set_wall_clock(2023, 3, 26, 2, 5, 0);  // set back by an hour
  house.content("evelst.hwd") +=
      "Kitchen Kettle~A~4~ ~02:20~off~once~mtwufsr\r\nHall Lamp~B~12~20~02:50~on~daily~r\r\n"
      "Kitchen Kettle~A~4~ ~02:40~off~daily~r\r\n";
  house.run_until(2, 40, 30);
  EXPECT_THAT(house.line(), ElementsAre("Sun 02:20:00 A4 3", "Sun 02:40:00 A4 3"))
      << "an old event ran, or a new one not";
  EXPECT_EQ(house.status(),
            "Timer, Hall Lamp off (02:40) has had its turn on this day and does not run again")
      << "wiped out by the one that ran";
  house.run_until(3, 10, 0);
  EXPECT_THAT(house.line(), SizeIs(3)) << "a new daily event in the repeated hour";
  house.run_until(3, 0, 30);  // the next day
  EXPECT_THAT(house.line(),
              ElementsAre("Mon 01:59:00 A3 2", "Mon 01:59:00 A3 5", "Mon 01:59:00 A3 4 60",
                          "Mon 02:15:00 B12 2", "Mon 02:15:00 B12 5", "Mon 02:40:00 B12 3",
                          "Mon 03:00:00 A4 2"));
}

TEST(SchedulerStory, ElevenOnceEventsAreRemovedAndTheTwelfthRunsAgain) {
  std::string events;
  for (int unit = 1; unit <= 12; ++unit)
    events += "Hall Lamp~C~" + std::to_string(unit) + "~ ~07:30~off~once~mtwufsr\r\n";
  EventHouse house(events);
  FrmMain& form = house.open_connected_at(7, 29, 30);
  form.timerdelete.set_enabled(false);  // no slot comes free during the pass
  house.run_until(7, 31, 0);
  EXPECT_EQ(house.line().size(), 12u);
  form.timerdelete.set_enabled(true);
  house.run_until(7, 32, 0);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~C~12~ ~07:30~off~once~mtwufsr"));
  house.run_until(7, 31, 0);
  EXPECT_THAT(house.line(), ElementsAre("Thu 07:30:00 C12 3"));
  EXPECT_THAT(house.event_lines(), IsEmpty());
}

TEST(SchedulerStory, AOnceEventThatCannotBeRemovedIsToldAndDoesNotRunAgain) {
  EventHouse house("Hall Lamp~B~12~ ~07:30~off~once~mtwufsr\r\n");
  house.open_connected_at(7, 29, 30);
  house.files.stop_at(1);  // a read-only folder
  house.run_until(7, 31, 0);
  EXPECT_THAT(house.line(), SizeIs(1));
  EXPECT_THAT(house.form().lab_notice.caption.get(),
              HasSubstr("The once-event Hall Lamp off at 07:30 cannot be removed"));
  house.forget_program();
  house.open();
  house.run_until(7, 29, 0);
  EXPECT_TRUE(house.form().lab_notice.visible);
  house.run_until(7, 31, 0);
  EXPECT_THAT(house.line(), IsEmpty()) << "a restart forgot that it has run";
  house.files.stop_at(3);  // the new list can be written, but not take its place
  house.loop.advance(13s);
  EXPECT_THAT(house.form().Statusbar.panel2.get(), HasSubstr("could not be deleted"));
  house.files.no_stop();
  house.loop.advance(20s);
  EXPECT_THAT(house.event_lines(), IsEmpty());
  EXPECT_FALSE(house.form().lab_notice.visible);
}

TEST(SchedulerStory, APowerCutAndAListThatCannotBeReadLoseNothing) {
  EventHouse house(
      "Hall Lamp~B~12~100~23:00~on~daily~mtwufsr\r\nHall Lamp~B~12~ ~23:10~off~daily~mtwufsr\r\n"
      "Kitchen Kettle~A~4~100~22:30~on~once~w\r\nKitchen Table Lamp~A~3~40~00:20~on~daily~u\r\n");
  const std::string events_key = kMachineKey + "\\Events";
  std::string damaged;
  for (int year = 1000; year < 3000; ++year) damaged += std::to_string(year) + "-06-20 ";
  house.registry.write(RegistryRoot::kLocalMachine, events_key, "days",
                       {RegistryType::kString, damaged});
  house.open_connected_at(22, 0, 0);
  house.forget_program();
  house.loop.set_wall_clock(2023, 6, 22, 0, 30, 10);
  house.open();
  house.loop.advance(30s);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("B12 3"), HasSubstr("A3 2"), HasSubstr("A3 5"),
                                        HasSubstr("A3 4 60")));
  EXPECT_THAT(house.status_texts,
              Contains("Caught up on 2 events of the time from 2023-06-21 22:01 to 00:29, in which "
                       "the program did not run: Hall Lamp off (2023-06-21 23:10), Kitchen Table "
                       "Lamp on (00:20). Left out: Hall Lamp on (2023-06-21 23:00), followed by a "
                       "later one; Kitchen Kettle on (2023-06-21 22:30), too late"));
  EXPECT_THAT(house.form().lab_notice.caption.get(), StartsWith("Caught up on 2 events"));
  EXPECT_THAT(house.event_lines(), Not(Contains(HasSubstr("once")))) << "its minute has passed";

  house.files.unreadable.insert(House::file("evelst.hwd"));
  house.run_until(23, 1, 0);
  EXPECT_THAT(house.line(), IsEmpty());
  EXPECT_FALSE(house.form().lab_notice.visible) << "told for good";
  house.files.unreadable.clear();
  house.run_until(23, 2, 5);
  EXPECT_THAT(house.line(), ElementsAre("Thu 23:02:00 B12 2"));
  EXPECT_LT(house.registry.read(RegistryRoot::kLocalMachine, events_key, "days")->data.size(), 100u)
      << "thousands of days to be forgotten one by one";

  house.interface_control.fails = true;
  house.loop.set_wall_clock(2023, 6, 22, 23, 12, 10);
  house.loop.advance(10s);
  EXPECT_EQ(
      house.status(),
      "Caught up on 0 events of the time from 23:03 to 23:11, which the clock skipped. Left out: "
      "Hall Lamp off (23:10), could not be sent");
  EXPECT_THAT(house.form().lab_notice.caption.get(),
              AllOf(HasSubstr("on (23:00).\n"), EndsWith("could not be sent.")))
      << "one gap wiped out the one before";
}

TEST(SchedulerStory, WhatAPersonSwitchesMeanwhileIsNotMadeGoodAway) {
  EventHouse house(
      "Kitchen Kettle~A~4~100~22:30~on~daily~mtwufsr\r\n"
      "Hall Lamp~B~12~100~22:40~on~daily~mtwufsr\r\n"
      "Hall Lamp~B~12~ ~22:51~off~daily~mtwufsr\r\n");
  FrmMain& form = house.open_connected_at(22, 20, 0);
  house.click_node("Hall");
  house.loop.set_wall_clock(2023, 6, 21, 22, 50, 0);  // asleep
  house.interface_control.mains_time = 500ms;
  house.loop.advance(1200ms);
  house.click(form.device[0]);  // on
  house.loop.advance(100ms);
  house.click(form.device[0], 20s);  // and off again
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("A4 2"), HasSubstr("B12 2"), HasSubstr("B12 3")));
  EXPECT_THAT(house.status(), HasSubstr("Left out: Hall Lamp on (22:40), followed by a later one"));
  house.run_until(22, 51, 30);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("B12 3"))) << "what is due later runs";
}

TEST(SchedulerStory, SettingsThatAreReadLateAreNotForgotten) {
  EventHouse house(
      "Hall Lamp~B~12~100~22:05~on~daily~mtwufsr\r\nHall Lamp~B~12~ ~23:10~off~daily~mtwufsr\r\n"
      "Kitchen Kettle~A~4~100~23:31~on~daily~mtwufsr\r\n");
  house.open_connected_at(22, 0, 0);
  house.run_until(23, 0);
  house.forget_program();
  house.run_until(23, 29, 30);
  house.registry.is_read = false;
  house.registry.trouble = StoreTrouble::kLocked;
  house.open();
  house.run_until(23, 32, 30);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("B12 2"), HasSubstr("A4 2")));
  house.registry.is_read = true;
  house.registry.trouble = StoreTrouble::kNone;
  house.run_until(23, 33, 30);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("B12 3"))) << "what was missed, and only that";
  house.loop.set_wall_clock(2023, 6, 21, 22, 4, 0);
  house.run_until(23, 35);
  EXPECT_THAT(house.line(), IsEmpty()) << "what had run was written over";
}

TEST(SchedulerStory, OddFilesCostOnlyTheirBadLines) {
  const std::string monster(1 << 20, '~');
  EventHouse house("\xEF\xBB\xBFHall Lamp~B~1~ ~07:30~off~daily~w\n\n\r\nno event at all\r\n" +
                   monster + "\rHall Lamp~B~x~ ~07:30~off~daily~w\r\n" +
                   "Hall Lamp~Z~2~ ~07:30~off~daily~w\r\nHall Lamp~B~3~ ~7h30~off~daily~w\r\n"
                   "Hall Lamp~B~4~lots~07:30~on~daily~w\nHall Lamp~B~5~100~07:30~on~daily~w");
  FrmMain& form = house.open_connected_at(7, 29, 30);
  EXPECT_EQ(form.ListView1.rows.get().size(), 5u);
  EXPECT_EQ(form.ListView1.rows.get()[0][0], "Hall Lamp") << "a byte-order mark became a letter";
  EXPECT_TRUE(form.lab_eventnotice.visible);
  EXPECT_THAT(form.lab_eventnotice.caption.get(),
              HasSubstr("3 lines of evelst.hwd cannot be understood and are left out, the first "
                        "of them line 4."));
  EXPECT_THAT(form.lab_eventnotice.caption.get(),
              HasSubstr("3 events will never run. Hall Lamp Z2"));
  house.run_until(7, 30, 30);
  EXPECT_THAT(house.line(), ElementsAre("Wed 07:30:00 B1 3", "Wed 07:30:01 B5 2"));

  // changed by hand while the program runs
  house.content("evelst.hwd") = "Hall Lamp~B~6~ ~07:31~off~daily~w\n";
  house.run_until(7, 31, 30);
  EXPECT_THAT(house.line(), ElementsAre("Wed 07:31:00 B6 3"));
  house.files.unreadable.insert(House::file("evelst.hwd"));
  house.run_until(7, 32, 30);
  EXPECT_EQ(house.status(), "Timer, the event list evelst.hwd cannot be read");
  EXPECT_FALSE(form.filebusy);
}

TEST(SchedulerStory, MidnightAndTheInstaller) {
  EventHouse house("Hall Lamp~B~12~ ~00:02~off~daily~w\r\n");
  FrmMain& form = house.open_connected_at(23, 59, 50);
  const auto before = form.sunset_time;
  house.run_until(0, 0, 30);
  ASSERT_TRUE(form.sunset_time && before);
  EXPECT_EQ(std::chrono::floor<std::chrono::days>(*form.sunset_time),
            std::chrono::floor<std::chrono::days>(*before) + std::chrono::days(1));
  EXPECT_THAT(form.Statusbar.panel1.get(), StartsWith("0:00:"));
  house.loop.set_wall_clock(2023, 6, 24, 9, 0, 0);  // asleep over two midnights
  house.loop.advance(2s);
  EXPECT_EQ(std::chrono::floor<std::chrono::days>(*form.sunset_time),
            std::chrono::floor<std::chrono::days>(*before) + std::chrono::days(3));

  house.set_machine("installing", "True");
  house.content("evelst.hwd") = "Hall Lamp~B~12~ ~09:01~off~daily~s\r\n";
  house.line();
  house.run_until(9, 2, 0);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_THAT(house.line(), IsEmpty());
}

}  // namespace
}  // namespace homewarden::testing
