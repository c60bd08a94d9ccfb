#include "platform/speech/voice_form.h"

#include "platform/speech/spoken_words.h"

namespace homewarden::testing {
namespace {

using speech::read_voice;
using speech::VoiceForm;
using speech::VoicePart;
using ::testing::ElementsAre;

TEST(VoiceForm, TheFourCommandsOfADeviceAreToldApart) {
  const VoiceForm on = read_voice("Living Room [Floor Lamp] [on]");
  EXPECT_EQ(on.room, "Living Room");
  EXPECT_EQ(on.device, "Floor Lamp");
  EXPECT_EQ(on.after, "on");
  EXPECT_TRUE(on.after_optional);
  const VoiceForm bright = read_voice("Bright Living Room [Floor Lamp]");
  EXPECT_EQ(bright.before, "Bright");
  EXPECT_EQ(bright.room, "Living Room");
  EXPECT_FALSE(bright.before_optional);
  const VoiceForm off = read_voice("[Cancel] Hall [Lamp]");
  EXPECT_EQ(off.before, "Cancel");
  EXPECT_EQ(off.room, "Hall");
  EXPECT_EQ(off.device, "Lamp");
  EXPECT_TRUE(off.before_optional);
}

// A name may hold what the form is written with, and be empty: no word of it may become another
// device's.
TEST(VoiceForm, NamesWithBracketsAndWithoutLettersDoNoHarm) {
  EXPECT_THAT(read_voice("[repeat] command").plain,
              ElementsAre(VoicePart{"repeat", true}, VoicePart{"command", false}));
  EXPECT_EQ(read_voice("Hall [Lamp [old]] [on]").device, "Lamp old");
  EXPECT_EQ(read_voice("Hall [] [on]").device, "");
  EXPECT_THAT(read_voice("Attic [2] [Lamp] [on]").plain, ::testing::SizeIs(4));
  EXPECT_THAT(read_voice("Hall [Lamp").plain.empty() ? read_voice("Hall [Lamp").device : "Lamp",
              "Lamp");
  EXPECT_FALSE(read_voice("]][").is_device() && !read_voice("]][").room.empty());
}

// Each of these was once heard as something else or made the whole grammar unreadable.
TEST(SpokenWords, AreWhatAPersonSays) {
  const std::string long_row = "Lamp " + std::string(5000, '.');
  const std::vector<std::pair<const char*, std::vector<std::string>>> names = {
      {"Floor Lamp", {"floor", "lamp"}},
      {"TV", {"t", "v"}},
      {"HALL", {"hall"}},
      {"Lamp 2", {"lamp", "two"}},
      {"Fan & Light", {"fan", "and", "light"}},
      {"Zoe's", {"zoe's"}},
      {"Zoe\x92s Lamp", {"zoe's", "lamp"}},
      {"Caf\xE9", {"cafe"}},
      {"B\xFCro", {"buro"}},
      {"Gie\xDFkanne", {"giesskanne"}},
      {"Sm\xF8rrebr\xF8"
       "d",
       {"smorrebrod"}},
      {"Lamp (old) <2>; [x] | *", {"lamp", "old", "two", "x"}},
      {"???", {}},
      {long_row.c_str(), {"lamp"}},
      {"", {}},
      {"\x01\x7F\x81\xFF", {"y"}}};
  for (const auto& [name, words] : names) EXPECT_EQ(speech::spoken_words(name), words) << name;
}

}  // namespace
}  // namespace homewarden::testing
