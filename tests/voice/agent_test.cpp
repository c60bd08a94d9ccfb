// The agent with a recogniser that hears what the test says.

#include "voice/agent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "tests/platform/fake_recogniser.h"
#include "tests/platform/memory_files.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"
#include "voice/command_groups.h"
#include "voice/voice_commands.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre, ::testing::HasSubstr, ::testing::IsEmpty, ::testing::SizeIs;
using Verdict = Heard::Verdict;

class AgentTest : public ::testing::Test {
 protected:
  AgentTest() {
    std::ifstream file(HOMEWARDEN_SOURCES "/characters/merlin.acs", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    files.contents["/house/merlin.acs"] = text.str();
    start();
  }

  void start() {
    agent = std::make_unique<Agent>(figure, sheet, recogniser, microphones, files, settings, loop,
                                    "/house");
    agent->Command.connect([this](const VoiceCommand& one) { told.push_back(one.caption); });
    agent->ListenStart.connect([this](const std::string&) {
      told.push_back("listens");
      agent->Character("merlin")->Show();
    });
    agent->ListenEnd.connect([this] { told.push_back("ends"); });
    agent->not_understood.connect(
        [this](const std::string& words) { told.push_back("not: " + words); });
    agent->listening_failed.connect(
        [this](const std::string& reason) { told.push_back("failed: " + reason); });
  }

  AgentCharacter& merlin() { return *agent->Character("merlin"); }

  // Two rooms of one device each, and the fixed commands.
  void load() {
    ASSERT_EQ(agent->Load("merlin", "merlin.acs"), "");
    merlin().Commands().RemoveAll();
    for (const VoiceCommand& command : fixed_voice_commands()) merlin().Commands().Add(command);
    add({"Hall", "Lamp", "A", 3});
    add({"Dim Room", "Zoe's Fan", "B", 12});
    loop.run_pending();
  }
  void add(const Device& device) {
    for (const VoiceCommand& command : voice_commands_of(device)) merlin().Commands().Add(command);
  }
  void listen() {
    merlin().Listen(true);
    loop.run_pending();
    told.clear();
  }

  VirtualLoop loop;
  MemoryFiles files;
  MemoryRegistry registry;
  Settings settings{registry};
  FakeRecogniser recogniser{loop};
  FakeMicrophones microphones;
  FrmCharacter figure;
  FrmSpeechSheet sheet;
  std::unique_ptr<Agent> agent;
  std::vector<std::string> told;
};

TEST_F(AgentTest, ACharacterThatCannotBeLoadedIsSaidInWords) {
  EXPECT_THAT(agent->Load("gnome", "gnome.acs"), HasSubstr("There is no character file"));
  files.contents["/house/gnome.acs"] = "homewarden-character 1\nfrown\n";
  EXPECT_THAT(agent->Load("gnome", "gnome.acs"), HasSubstr("damaged: line 2: "));
  EXPECT_FALSE(agent->Character("gnome"));
  EXPECT_FALSE(agent->Character(""));
  load();
  EXPECT_TRUE(agent->Character("merlin"));
}

// Catches: a grammar built for each of hundreds of commands; a change while it listens that is
// lost; numbers of a menu that lead to another command after the change.
TEST_F(AgentTest, CommandsThatChangeAreTakenOverAtOnceAndTogether) {
  load();
  EXPECT_EQ(recogniser.times_set, 1);
  EXPECT_THAT(recogniser.commands, SizeIs(10));
  ASSERT_EQ(figure.list.get().size(), 3U);
  EXPECT_EQ(figure.list.get()[0].choices[1].caption, "Repeat Command");
  EXPECT_EQ(figure.list.get()[2].caption, "Dim Room");
  EXPECT_THAT(figure.list.get()[2].choices, SizeIs(4));
  const int lamp_on = figure.list.get()[1].choices[0].number;
  listen();
  merlin().Commands().RemoveAll();
  add({"Attic", "Fan", "C", 1});
  loop.run_pending();
  EXPECT_EQ(recogniser.times_set, 2);
  EXPECT_THAT(recogniser.commands, SizeIs(4));
  figure.command_chosen(lamp_on);
  loop.run_pending();
  EXPECT_THAT(told, IsEmpty());
  figure.command_chosen(figure.list.get()[0].choices[3].number);
  EXPECT_THAT(told, IsEmpty()) << "never from within a call";
  loop.run_pending();
  EXPECT_THAT(told, ElementsAre("Cancel Attic Fan"));
}

// A bracket in a name made "Hall" alone a command.
TEST_F(AgentTest, NamesWithBracketsLeaveTheFormOfTheirCommandsAlone) {
  const auto voice = [](const std::string& room, const std::string& name) {
    return voice_commands_of({room, name, "C", 1})[0].voice;
  };
  EXPECT_EQ(voice("Hall", "["), "Hall [ ] [on]");
  EXPECT_EQ(voice("At[ti]c", "L]amp"), "At ti c [L amp] [on]");
  const auto names = spoken_names(voice_commands_of({"[x]", "[y]", "C", 1})[3]);
  ASSERT_TRUE(names);
  EXPECT_EQ(names->room + "," + names->device, "x,y");
}

TEST_F(AgentTest, APlaceThatIsOnNoScreenIsForgotten) {
  for (const char* place : {"2147483647,2147483647", "0,-2147483648", "1", "1,2,3"}) {
    settings.write("agent", "Place", place);
    load();
    EXPECT_FALSE(figure.place.get()) << place;
  }
}

TEST_F(AgentTest, AListeningIsToldFromItsBeginningToItsEnd) {
  load();
  merlin().Listen(true);
  EXPECT_THAT(told, IsEmpty()) << "never from within a call";
  merlin().Listen(true);
  loop.run_pending();
  EXPECT_EQ(recogniser.times_listened, 1);
  EXPECT_EQ(figure.pose, Pose::kListening);
  recogniser.say(Verdict::kAccepted, "Hall Lamp on");
  EXPECT_THAT(told, ElementsAre("listens", "ends", "Hall Lamp on"));
  EXPECT_EQ(figure.pose, Pose::kUnderstood);
  merlin().Speak("Not sent: Hall Lamp on", AgentCharacter::Mood::kNotUnderstood);
  EXPECT_EQ(figure.lab_bubble.caption.get(), "Not sent: Hall Lamp on")
      << "in the place of the other";
  EXPECT_EQ(figure.pose, Pose::kNotUnderstood);
  loop.advance(4s);
  EXPECT_EQ(figure.pose, Pose::kIdle);
  loop.advance(5s);
  EXPECT_EQ(figure.lab_bubble.caption.get(), "");
  EXPECT_EQ(loop.pending_calls(), 0U) << "an idle figure wakes nobody";

  listen();
  merlin().Speak("Hall Lamp on", AgentCharacter::Mood::kUnderstood);
  EXPECT_EQ(figure.pose, Pose::kListening) << "the command before has been sent meanwhile";
  EXPECT_EQ(figure.lab_bubble.caption.get(), "") << "not what was heard now";
  merlin().Speak("Not sent: Hall Lamp on", AgentCharacter::Mood::kNotUnderstood);
  EXPECT_EQ(figure.pose, Pose::kListening);
  EXPECT_EQ(figure.lab_bubble.caption.get(), "Not sent: Hall Lamp on");
  recogniser.say(Verdict::kRefused, "hall kettle on");
  EXPECT_THAT(told, ElementsAre("ends", "not: hall kettle on"));
  listen();
  recogniser.say(Verdict::kRefused, "Hall Lamp on");
  EXPECT_THAT(told, ElementsAre("ends", "not: ")) << "nobody is told that this is no command";
  listen();
  merlin().Listen(false);
  loop.run_pending();
  EXPECT_THAT(told, ElementsAre("ends"));
  EXPECT_EQ(figure.pose, Pose::kIdle);
  recogniser.trouble = "There is no microphone.";
  listen();
  told.clear();
  merlin().Listen(true);
  loop.run_pending();
  EXPECT_THAT(told, ElementsAre("ends", "failed: There is no microphone."));
  EXPECT_EQ(figure.lab_bubble.caption.get(), "There is no microphone.");
}

// Catches: a lamp switched by a doubt, by a question nobody saw, or by an answer that comes late.
TEST_F(AgentTest, ADoubtIsAskedAboutAndOnlyYesCarriesItOut) {
  load();
  const auto doubt = [this] {
    listen();
    recogniser.say(Verdict::kNearly, "Hall Lamp on");
    told.clear();
  };
  doubt();
  EXPECT_EQ(figure.lab_bubble.caption.get(), "Did you mean Hall Lamp on?");
  EXPECT_TRUE(figure.asking);
  merlin().Speak("Dim Room Zoe's Fan on", AgentCharacter::Mood::kUnderstood);
  EXPECT_TRUE(figure.asking) << "news does not hide a question";
  figure.cmd_yes.click();
  EXPECT_THAT(told, ElementsAre("Hall Lamp on"));
  figure.cmd_yes.click();
  EXPECT_THAT(told, SizeIs(1)) << "a second press";
  doubt();
  figure.cmd_no.click();
  EXPECT_THAT(told, ElementsAre("not: "));
  doubt();
  loop.advance(8s);
  EXPECT_FALSE(figure.asking);
  EXPECT_THAT(told, ElementsAre("not: "));
  doubt();
  listen();
  EXPECT_FALSE(figure.asking) << "whoever speaks again does not mean the question";
  merlin().Hide();
  recogniser.say(Verdict::kNearly, "Hall Lamp on");
  EXPECT_FALSE(figure.asking);
}

TEST_F(AgentTest, TheSheetChoosesMicrophoneStrictnessAndKeyForLater) {
  settings.write("agent", "Strictness", "lenient");
  settings.write("agent", "Microphone", "gone-7");
  load();
  EXPECT_EQ(recogniser.strictness, Strictness::kLenient);
  EXPECT_EQ(microphones.chosen, "gone-7");
  agent->PropertySheetVisible(true);
  EXPECT_TRUE(recogniser.prepared);
  EXPECT_THAT(sheet.lst_microphone.items.get(), SizeIs(4)) << "the one that is gone is kept";
  EXPECT_EQ(sheet.lst_microphone.selected, 3);
  EXPECT_EQ(microphones.chosen, "gone-7");
  sheet.lst_microphone.selected = 1;
  sheet.lst_strictness.selected = 0;
  sheet.key = "Ctrl+Alt+L";
  EXPECT_EQ(settings.read("agent", "Microphone", ""), "usb-1");
  EXPECT_EQ(settings.read("agent", "Strictness", ""), "strict");
  EXPECT_EQ(settings.read("agent", "Key", ""), "Ctrl+Alt+L");
  EXPECT_EQ(recogniser.strictness, Strictness::kStrict);
  EXPECT_EQ(microphones.chosen, "usb-1");
}

// Catches: a test that switches the lamp.
TEST_F(AgentTest, ATestSaysWhatWasHeardAndDoesNothing) {
  load();
  for (const auto& [verdict, words] : {std::pair{Verdict::kAccepted, "surely enough"},
                                       {Verdict::kNearly, "it would ask"},
                                       {Verdict::kRefused, "it would do nothing"}}) {
    sheet.cmd_test.click();
    EXPECT_EQ(sheet.cmd_test.caption.get(), "Stop");
    merlin().Listen(true);
    recogniser.say(verdict, "Hall Lamp on");
    loop.run_pending();
    EXPECT_THAT(sheet.lab_tested.caption.get(), HasSubstr(words));
  }
  EXPECT_THAT(told, IsEmpty());
  EXPECT_FALSE(figure.asking);
}

TEST_F(AgentTest, ARespellingIsKeptAndPassedOn) {
  load();
  recogniser.guessed({{"Zoe's Fan", {"zoe's"}}});
  ASSERT_THAT(sheet.guessed.get(), SizeIs(1));
  EXPECT_EQ(sheet.guessed.get()[0].words, "zoe's");
  sheet.respelled("Zoe's Fan", " zoh eez fan ");
  loop.run_pending();
  EXPECT_THAT(recogniser.spoken_as, ElementsAre(::testing::Pair("Zoe's Fan", "zoh eez fan")));
  recogniser.guessed({});
  EXPECT_THAT(sheet.guessed.get(), SizeIs(1)) << "to take it back";
  sheet.respelled("Zoe's Fan", "");
  loop.run_pending();
  EXPECT_THAT(recogniser.spoken_as, IsEmpty());
  EXPECT_EQ(settings.read("spoken", "Zoe's Fan", "none"), "none");
}

}  // namespace
}  // namespace homewarden::testing
