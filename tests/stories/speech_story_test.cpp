// The house by voice: which commands there are, what each does, and what the window shows of it.

#include <algorithm>

#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

class SpeechStory : public ::testing::Test {
 protected:
  FakeCharacter& merlin() { return house.speech.characters["merlin"]; }
  Texts names() {
    Texts names;
    for (const VoiceCommand& command : merlin().list) names.push_back(command.name);
    return names;
  }

  // A person says a command, by its name; then the house goes on for a time.
  void say(const std::string& name, House::Time length = 0ms) {
    EXPECT_TRUE(house.speech.say(name)) << name;
    house.loop.advance(length);
  }

  House house;
};

TEST_F(SpeechStory, TheCharacterLearnsTheHouseAndFollowsItsChanges) {
  house.open_connected();
  EXPECT_THAT(house.speech.loaded, ElementsAre("merlin from merlin.acs"));
  EXPECT_THAT(merlin().calls,
              ElementsAre("language 1033", "no sounds", "caption Homewarden", "list"));
  EXPECT_THAT(house.wait_texts, IsSupersetOf({"Loading MsAgent", "Loading Devices"}));
  EXPECT_THAT(house.status_texts, Contains("MsAgent Character has loaded"));
  EXPECT_THAT(names(), ElementsAre("Properties", "repeat", "on~B12", "bright~B12", "dim~B12",
                                   "off~B12", "on~A4", "bright~A4", "dim~A4", "off~A4", "on~A3",
                                   "bright~A3", "dim~A3", "off~A3"));
  EXPECT_EQ(merlin().list[1], (VoiceCommand{"repeat", "Repeat Command", "[repeat] command"}));
  EXPECT_EQ(merlin().list[2], (VoiceCommand{"on~B12", "Hall Lamp on", "Hall [Lamp] [on]"}));
  EXPECT_EQ(merlin().list[3],
            (VoiceCommand{"bright~B12", "Bright Hall Lamp", "Bright Hall [Lamp]"}));
  EXPECT_EQ(merlin().list[5],
            (VoiceCommand{"off~B12", "Cancel Hall Lamp", "[Cancel] Hall [Lamp]"}));

  house.form().txt_devname.text = "Fan";
  house.form().lst_temproom.text = "Hall";
  house.form().lst_housecode.text = "C";
  house.form().lst_device.text = "7";
  house.click(house.form().Command4, 5s);
  EXPECT_THAT(names(), Contains("bright~C7"));
  EXPECT_THAT(names(), SizeIs(18));
}

TEST_F(SpeechStory, WithoutACharacterTheProgramRunsAndOffersNoVoice) {
  house.speech.trouble = "There is no file \"merlin.acs\".";
  house.settings.write("agent", "LastCharacter", "gnome");
  FrmMain& form = house.open_connected();
  EXPECT_THAT(house.speech.loaded, ElementsAre("gnome from gnome.acs"));
  EXPECT_THAT(house.status_texts,
              Contains("Cannot load MsAgent Character, see help file for more."));
  EXPECT_FALSE(form.cmd_listen.visible);
  EXPECT_FALSE(form.mnu_listen.visible);
  house.click(form.cmd_listen);
  house.click_node("Lamp~B~12", 5s);
  EXPECT_EQ(house.machine("HallLamp"), "True");
}

TEST_F(SpeechStory, WhatIsSaidIsSwitchedRecordedAndRepeated) {
  house.open_connected();
  say("repeat", 5s);
  EXPECT_THAT(house.notes(), IsEmpty()) << "there was nothing to repeat";

  say("on~B12", 5s);
  EXPECT_THAT(house.notes(), ElementsAre("send B12 2 20 20 50"));
  EXPECT_EQ(house.machine("HallLamp"), "True");
  EXPECT_THAT(house.status(), StartsWith("Turned ON device with housecode B12 at "));
  EXPECT_THAT(merlin().said, Contains("Hall Lamp on"));

  say("dim~B12", 5s);
  say("repeat", 5s);
  EXPECT_EQ(house.machine("dimHallLamp"), "60") << "two steps of 20 % down";
  say("bright~B12", 5s);
  EXPECT_EQ(house.machine("dimHallLamp"), "80");
  house.notes();
  say("off~B12", 5s);
  say("repeat", 5s);
  EXPECT_THAT(house.notes(), ElementsAre("send B12 3 20 20 50", "send B12 3 20 20 50"));
  EXPECT_EQ(house.machine("HallLamp"), "False");
  say("dim~B12", 5s);
  EXPECT_EQ(house.machine("HallLamp"), "False") << "a lamp that is off takes no notice of Dim";

  say("Properties", 5s);
  EXPECT_TRUE(house.speech.sheet_is_shown);
  house.notes();
  say("repeat", 5s);
  EXPECT_THAT(house.notes(), IsEmpty()) << "the properties were the last command";
}

// Two devices at one address: the one that was spoken of shows it.
TEST_F(SpeechStory, ACommandBelongsToTheDeviceThatWasNamed) {
  house.content("rmlst.hwd") += "Kitchen~Oven~B~12\r\n";
  house.open_connected();
  const auto oven = std::find_if(merlin().list.begin(), merlin().list.end(),
                                 [](const auto& one) { return one.caption == "Kitchen Oven on"; });
  ASSERT_NE(oven, merlin().list.end());
  house.speech.Command(VoiceCommand(*oven));
  house.loop.advance(5s);
  EXPECT_EQ(house.machine("KitchenOven"), "True");
  EXPECT_EQ(house.machine("HallLamp"), "(none)");
}

TEST_F(SpeechStory, ACommandThatCouldNotBeSentIsSaid) {
  house.open_connected();
  house.interface_control.fails = true;
  say("on~A3", 5s);
  EXPECT_THAT(merlin().said, ElementsAre("Not sent: Kitchen Table Lamp on"));
}

TEST_F(SpeechStory, ListeningShowsTheRemindersAndGivesThePageBack) {
  FrmMain& form = house.open_connected();
  house.click_node("Hall", 1s);
  house.click(form.cmd_listen);
  EXPECT_THAT(merlin().calls, Contains("listen"));
  house.speech.ListenStart("merlin");
  EXPECT_EQ(house.status(), "PLEASE SPEAK YOUR COMMAND CLEARLY");
  EXPECT_THAT(merlin().calls, Contains("show"));
  EXPECT_TRUE(form.Frame3.visible);
  EXPECT_FALSE(form.frm_devices.visible);
  EXPECT_TRUE(form.listening);
  house.click(form.cmd_listen);
  EXPECT_EQ(merlin().calls.back(), "give up") << "a second press ends it";
  house.speech.ListenEnd();
  EXPECT_FALSE(form.listening);

  say("on~B12", 1s);
  EXPECT_TRUE(form.frm_devices.visible) << "the room shows what was done";
  EXPECT_FALSE(form.Frame3.visible);
  house.loop.advance(18s);
  EXPECT_NE(merlin().calls.back(), "hide");
  house.loop.advance(2s);
  EXPECT_EQ(merlin().calls.back(), "hide");

  // The macro panel is not touched, and a page that was chosen meanwhile stays.
  house.click_node("Macros", 1s);
  house.speech.ListenStart("merlin");
  EXPECT_TRUE(form.frm_macros.visible);
  house.click_node("Profiles", 30s);
  EXPECT_TRUE(form.Frame5.visible);
  house.speech.not_understood("Hall kettle on");
  EXPECT_EQ(form.lab_heard.caption.get(), "Heard \"Hall kettle on\", which is no command.");
}

}  // namespace
}  // namespace homewarden::testing
