// The whole way of a spoken command: a wave file in place of the microphone, the recogniser with
// its thread, the agent, the program, and an emulated interface at the end of the driver.

#include <QTest>
#include <fstream>
#include <sstream>

#include "platform/cm11/driver.h"
#include "platform/qt/qt_loop.h"
#include "platform/speech/speech_recogniser.h"
#include "platform/speech/wav_source.h"
#include "tests/cm11/emulated_port.h"
#include "tests/platform/fake_recogniser.h"
#include "tests/platform/scratch_folder.h"
#include "tests/speech/talk/synthetic_speech.h"
#include "tests/stories/house.h"
#include "tools/emulator/emulator.h"
#include "voice/agent.h"

namespace homewarden::testing {
namespace {

// The house has a clock of its own, the recogniser lives in that of the machine.
class PathTest : public ::testing::Test {
 protected:
  PathTest() {
    std::ifstream file(HOMEWARDEN_SOURCES "/characters/merlin.acs", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    house.content("merlin.acs") = text.str();
    house.connected = &driver;
    house.used_speech = &agent;
    recogniser->heard.connect([this](const Heard&) { ++heard; });
    house.open(2s);
  }
  ~PathTest() override { house.forget_program(); }

  // Presses the button, says it, and gives the house its time.
  void speak(const std::string& words) {
    write_wave(said.path() / "said.wav", in_a_room(say(words, "slt"), 0.5, 1));
    house.click(house.form().cmd_listen, 1s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return heard > 0; }, 60000)) << words;
    heard = 0;
    house.loop.advance(10s);
  }

  std::string lamp() { return emulator.modules().at({1, 12}).text(); }

  House house;
  emulator::Emulator emulator;
  EmulatedPort port{house.loop, emulator, 2};
  cm11::Driver driver{house.loop, port};

  ScratchFolder said;
  qt::QtLoop machine;
  speech::WavSource microphone{said.path() / "said.wav", speech::WavSource::Pace::kAtOnce};
  std::unique_ptr<Recogniser> recogniser = speech::make_recogniser(
      [this](std::function<void()> function) { machine.post(std::move(function)); }, microphone);
  int heard = 0;
  FakeMicrophones names;
  FrmCharacter figure;
  FrmSpeechSheet sheet;
  Agent agent{figure, sheet, *recogniser, names, house.files, house.settings, house.loop, "/house"};
};

TEST_F(PathTest, WhatIsSaidSwitchesTheLampAndIsRepeated) {
  ASSERT_TRUE(house.form().cmd_listen.visible);
  speak("hall lamp on");
  EXPECT_EQ(lamp(), "on 100 %");
  EXPECT_EQ(house.machine("HallLamp"), "True");
  speak("dim hall lamp");
  const std::string once = lamp();
  EXPECT_NE(once, "on 100 %");
  speak("repeat command");
  EXPECT_NE(lamp(), once) << "one step further down";
  EXPECT_EQ(house.machine("dimHallLamp"), "60");
  speak("cancel hall lamp");
  EXPECT_THAT(lamp(), StartsWith("off"));
  speak("kitchen window on");
  EXPECT_EQ(house.status(), "PLEASE SPEAK YOUR COMMAND CLEARLY") << "nothing was switched";
}

}  // namespace
}  // namespace homewarden::testing
