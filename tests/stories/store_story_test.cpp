// Settings that cannot be read or written, as the person sees it.

#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

TEST(StoreStory, WhatCannotBeWrittenIsToldUntilItIs) {
  House house;
  FrmMain& form = house.open_connected();
  EXPECT_FALSE(form.lab_notice.visible);
  house.registry.may_change = [] { return false; };
  house.receive("A3", 2, 2s);
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True") << "what was recorded is not shown";
  EXPECT_THAT(form.lab_notice.caption.get(),
              StartsWith("The settings in machine.db cannot be written: the disk is read-only."));
  EXPECT_THAT(house.status_texts, Contains(HasSubstr("machine.db cannot be written")));
  house.registry.may_change = nullptr;
  house.loop.advance(2s);
  EXPECT_FALSE(form.lab_notice.visible);
  EXPECT_EQ(house.status(), "The settings can be written again; nothing was lost.");
  house.registry.lose_unwritten();
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
}

TEST(StoreStory, DamageStaysToldUntilTheNextStart) {
  House house;
  house.registry.set_aside =
      "/home/Jos\xC3\xA9/\xE2\x82\xAC\xF0\x9F\x8F\xA0 \xE9/machine.db.broken-1";
  FrmMain& form = house.open_connected();
  house.loop.advance(1h);
  EXPECT_THAT(form.lab_notice.caption.get(),
              HasSubstr("set aside as /home/Jos\xE9/\x80? \xE9/machine.db.broken-1"));
  house.forget_program();
  house.registry.set_aside.clear();
  house.open(5s);
  EXPECT_FALSE(house.form().lab_notice.visible);
}

// Defaults would be taken for what was set, and written over it.
TEST(StoreStory, ALockAtTheStartIsWaitedForHalfAMinuteAndNothingIsWrittenOverWhatIsBehindIt) {
  for (const auto length : {10s, 100s}) {
    House house;
    house.settings.write("data", "left", "2345");
    house.registry.write(RegistryRoot::kLocalMachine, kMachineKey + "\\NotSent", "HallLamp",
                         {RegistryType::kString, "off"});
    house.registry.is_read = false;
    house.registry.trouble = StoreTrouble::kLocked;
    house.open(length);
    EXPECT_THAT(house.wait_texts, Contains("Waiting for the settings"));
    EXPECT_EQ(house.form().visible.get(), length > 60s);
    house.registry.is_read = true;
    house.registry.trouble = StoreTrouble::kNone;
    house.registry.changed(RegistryRoot::kLocalMachine);
    house.loop.advance(5s);
    EXPECT_EQ(house.form().Statusbar.unsent.caption.get(), "1 not sent");
    EXPECT_TRUE(house.form().visible);
    EXPECT_FALSE(house.form().lab_notice.visible);
    house.close(60s);
    EXPECT_EQ(house.settings.read("data", "left", ""), "2345");
  }
}

}  // namespace
}  // namespace homewarden::testing
