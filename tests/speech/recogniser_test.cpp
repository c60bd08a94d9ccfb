#include <QTest>
#include <fstream>

#include "platform/qt/qt_loop.h"
#include "platform/speech/microphone.h"
#include "platform/speech/speech_recogniser.h"
#include "platform/speech/wav_source.h"
#include "tests/platform/scratch_folder.h"
#include "tests/speech/talk/house_talk.h"
#include "tests/speech/talk/synthetic_speech.h"

namespace homewarden::testing {
namespace {

using speech::WavSource;
using Verdict = Heard::Verdict;

// The recogniser as the program has it: on an event loop, with its thread, a file for the
// microphone.
class RecogniserTest : public ::testing::Test {
 protected:
  RecogniserTest() {
    recogniser->ended.connect([this](ListenEnd how, const std::string& trouble) {
      ends.push_back(how);
      troubles.push_back(trouble);
    });
    recogniser->heard.connect([this](const Heard& one) { heard.push_back(one); });
    recogniser->guessed.connect([this](const std::vector<GuessedName>& names) {
      guessed = names;
      ++learned;
    });
    recogniser->level.connect([this](double) { ++levels; });
  }

  void speak(const Sound& sound) { write_wave(file, sound); }
  void speak(const std::string& text) { speak(in_a_room(say(text, "slt"), 0.5, 1)); }

  static bool wait_until(const std::function<bool()>& done) { return QTest::qWaitFor(done, 60000); }
  bool hear(std::size_t count) {
    return wait_until([&] { return heard.size() >= count; });
  }

  ScratchFolder folder;
  const std::filesystem::path file = folder.path() / "said.wav";
  qt::QtLoop loop;
  WavSource source{file, WavSource::Pace::kAtOnce};
  std::unique_ptr<Recogniser> recogniser = speech::make_recogniser(
      [this](std::function<void()> function) { loop.post(std::move(function)); }, source);
  std::vector<ListenEnd> ends;
  std::vector<std::string> troubles;
  std::vector<Heard> heard;
  std::vector<GuessedName> guessed;
  int learned = 0;
  int levels = 0;
};

TEST_F(RecogniserTest, WhatIsSaidIsHeardAndGuessedNamesAreTold) {
  recogniser->set_commands(talking_house(), {});
  speak("Garden Christmas Tree on");
  int begun = 0;
  recogniser->began.connect([&] { ++begun; });
  recogniser->listen();
  recogniser->listen();  // it listens already
  EXPECT_EQ(begun, 1);
  ASSERT_TRUE(hear(1));
  EXPECT_THAT(ends, ::testing::ElementsAre(ListenEnd::kUtterance));
  EXPECT_EQ(heard[0].command.name, "on~B8");
  EXPECT_EQ(heard[0].command.caption, "Garden Christmas Tree on");
  EXPECT_EQ(heard[0].words, "garden christmas tree on");
  EXPECT_EQ(heard[0].verdict, Verdict::kAccepted);
  EXPECT_GT(levels, 5);
  EXPECT_THAT(guessed, ::testing::Contains(GuessedName{"Kinderzimmer", {"kinderzimmer"}}));
  EXPECT_FALSE(recogniser->is_listening());

  speak("Dinner is ready");
  recogniser->listen();
  ASSERT_TRUE(hear(2));
  EXPECT_EQ(heard[1].verdict, Verdict::kRefused);
}

// A device that is added while somebody speaks was not known when listening began.
TEST_F(RecogniserTest, CommandsThatChangeWhileItListensCountForWhatIsBeingSaid) {
  recogniser->set_commands(fixed_commands(), {});
  speak("Cancel Cellar Pump");
  recogniser->listen();
  recogniser->set_commands(device_commands("Cellar", "Pump", "C3"), {});
  ASSERT_TRUE(hear(1));
  EXPECT_EQ(heard[0].command.name, "off~C3");
  EXPECT_EQ(learned, 2);
}

TEST_F(RecogniserTest, NothingOfAListeningThatWasStoppedComesLater) {
  recogniser->set_commands(fixed_commands(), {});
  speak("Repeat command");
  recogniser->listen();
  recogniser->stop();
  EXPECT_THAT(ends, ::testing::ElementsAre(ListenEnd::kStopped));
  recogniser->listen();
  ASSERT_TRUE(hear(1));
  EXPECT_EQ(heard[0].command.name, "repeat");
  EXPECT_THAT(ends, ::testing::ElementsAre(ListenEnd::kStopped, ListenEnd::kUtterance));
  recogniser->listen();
  recogniser.reset();  // while its thread works
}

TEST_F(RecogniserTest, ThereIsAWordForAMachineWithoutMicrophone) {
  if (!speech::microphones().empty()) return;  // nobody wants a test to listen
  speech::Microphone microphone;
  std::string why;
  microphone.start([](speech::SoundView) {}, [&](const std::string& trouble) { why = trouble; });
  EXPECT_TRUE(wait_until([&] { return !why.empty(); }));
  EXPECT_EQ(why, "There is no microphone.");
}

TEST_F(RecogniserTest, SilenceTroubleAndAnEmptyHouseEndTheListening) {
  speak(in_a_room({}, 12, 0));
  recogniser->listen();
  ASSERT_TRUE(wait_until([&] { return ends.size() == 1; }));
  EXPECT_EQ(ends[0], ListenEnd::kNothing);
  speak("Kitchen Radio on");
  recogniser->listen();
  ASSERT_TRUE(hear(1));
  EXPECT_EQ(heard[0].verdict, Verdict::kRefused) << "nothing is known here";
  std::ofstream(file) << "no sound";
  recogniser->listen();
  ASSERT_TRUE(wait_until([&] { return ends.size() == 3; }));
  EXPECT_EQ(ends[2], ListenEnd::kTrouble);
  EXPECT_NE(troubles[2], "");
}

}  // namespace
}  // namespace homewarden::testing
