#include "platform/speech/house_grammar.h"

#include "platform/speech/decoder.h"
#include "platform/speech/voice_model.h"
#include "tests/platform/scratch_folder.h"
#include "tests/speech/talk/house_talk.h"

namespace homewarden::testing {
namespace {

using speech::build_grammar;
using speech::HouseGrammar;

class GrammarTest : public ::testing::Test {
 protected:
  void add(const std::string& room, const std::string& device) {
    const std::string address = "A" + std::to_string(++count_);
    for (VoiceCommand& one : device_commands(room, device, address)) commands.push_back(one);
  }

  // The name of the command that these words are; "" when they are none.
  std::string meaning(const std::string& words) {
    const HouseGrammar grammar = build_grammar(commands, spoken_as);
    const auto found = grammar.meaning.find(words);
    return found == grammar.meaning.end() ? "" : commands[found->second].name;
  }

  bool is_accepted() {
    const speech::VoiceModel model = speech::installed_model();
    const HouseGrammar grammar = build_grammar(commands, spoken_as);
    return speech::Decoder::open(model.acoustic)
        ->set_grammar(grammar.jsgf, speech::pronounce(grammar.words, model.dictionary));
  }

  std::vector<VoiceCommand> commands = fixed_commands();
  SpokenAs spoken_as;

 private:
  int count_ = 0;
};

// A short form that two commands share would switch the wrong lamp.
TEST_F(GrammarTest, WordsMayBeLeftOutWhereOneCommandIsMeant) {
  add("Hall", "Lamp");
  add("Garage", "Door");
  add("Hall", "Fan");
  EXPECT_EQ(meaning("hall lamp on"), "on~A1");
  EXPECT_EQ(meaning("cancel hall fan"), "off~A3");
  EXPECT_EQ(meaning("bright garage door"), "bright~A2");
  EXPECT_EQ(meaning("garage on"), "on~A2") << "its only device";
  EXPECT_EQ(meaning("dim garage"), "dim~A2");
  EXPECT_EQ(meaning("command"), "repeat");
  EXPECT_EQ(meaning("speech properties"), "Properties");
  for (const char* several : {"hall on", "bright hall", "hall lamp", "hall", "garage", "lamp on"})
    EXPECT_EQ(meaning(several), "") << several;
  for (const char* tempting : {"hall lamp off", "on hall lamp", "hall fan bright"})
    EXPECT_EQ(meaning(tempting), "") << tempting;
}

TEST_F(GrammarTest, AFullFormIsNeverAnotherCommandsShortOne) {
  add("Hall", "Lamp");
  add("Hall", "Fan");
  add("Hall Lamp", "Shade");
  EXPECT_EQ(meaning("hall lamp on"), "on~A1");
  EXPECT_EQ(meaning("bright hall lamp"), "bright~A1");
}

TEST_F(GrammarTest, NamesThatCannotBeSaidStopNoOthers) {
  add("Hall", "???");
  add("", "Lamp");
  add("Hall", "Lamp");
  add("Hall", "LAMP");
  add("K\xFC"
      "che",
      "Z\xFC"
      "rich 3\xB0 <a> | b;");
  add("Attic [2]", "Lamp");
  add("Hall", "xqzt");
  add("", "?!");
  EXPECT_EQ(meaning("lamp on"), "on~A2") << "in no room";
  EXPECT_EQ(meaning("hall lamp on"), "on~A3") << "the first of two with the same words";
  EXPECT_NE(meaning("on"), "on~A8") << "it has no words";
  EXPECT_THAT(build_grammar(commands, {}).unreachable, ::testing::SizeIs(12));
  EXPECT_TRUE(is_accepted());
  spoken_as["xqzt"] = "ex cue";
  EXPECT_EQ(meaning("hall ex cue on"), "on~A7");
  EXPECT_EQ(meaning("hall x q z t on"), "");
  spoken_as["xqzt"] = "???";
  EXPECT_EQ(meaning("hall x q z t on"), "on~A7") << "a respelling without words is none";
}

// The library ends the program at some damage, if it is let.
TEST(VoiceModel, OneThatIsDamagedIsSaidToBeSo) {
  const ScratchFolder scratch;
  const speech::VoiceModel installed = speech::installed_model();
  const speech::VoiceModel model{scratch.path() / "model", installed.dictionary};
  for (const char* name : {"transition_matrices", "sendump", "mdef", "variances"}) {
    std::filesystem::copy(installed.acoustic, model.acoustic);
    EXPECT_EQ(speech::trouble_with(model), "");
    std::filesystem::resize_file(model.acoustic / name, 0);
    EXPECT_EQ(speech::Decoder::open(model.acoustic), nullptr) << name;
    std::filesystem::remove(model.acoustic / name);
    EXPECT_THAT(speech::trouble_with(model), ::testing::HasSubstr(name));
    std::filesystem::remove_all(model.acoustic);
  }
}

TEST_F(GrammarTest, AnEmptyHouseAndALargeOneAreAccepted) {
  EXPECT_TRUE(is_accepted()) << "the fixed commands alone";
  for (int room = 1; room <= 20; ++room)
    for (int lamp = 1; lamp <= 10; ++lamp)
      add("Room " + std::to_string(room), "Lamp " + std::to_string(lamp));
  EXPECT_TRUE(is_accepted());
  EXPECT_EQ(meaning("bright room twenty lamp ten"), "bright~A200");
  EXPECT_THAT(build_grammar(commands, {}).unreachable, ::testing::IsEmpty());
  commands.clear();
  EXPECT_EQ(build_grammar(commands, {}).jsgf, "");
}

}  // namespace
}  // namespace homewarden::testing
