#include "tests/speech/talk/recognition_table.h"

namespace homewarden::testing {
namespace {

// Real recognition of synthetic speech, each command in one of four voices at one of five speeds.
// `voice_table` says all of it in all voices.
TEST(Recognition, TheHouseIsUnderstoodAndOtherTalkIsNot) {
#if defined(__SANITIZE_ADDRESS__)
  // Too few for shares, enough to see that nothing is read where it is not.
  const RecognitionTable few = recognise({"slt", "rms", "awb", "kal16"}, Extent::kFew);
  EXPECT_EQ(few.commands_in(Surroundings::kClean).accepted_share(), 100);
  return;
#endif
  const RecognitionTable table = recognise({"slt", "rms", "awb", "kal16"}, Extent::kOnce);
  table.print();
  EXPECT_GE(table.commands_in(Surroundings::kClean).accepted_share(), 99);
  EXPECT_GE(table.commands_in(Surroundings::kBabble20).accepted_share(), 97);
  EXPECT_GE(table.commands_in(Surroundings::kBabble10).accepted_share(), 85);
  EXPECT_GE(table.everyday.refused_share(), 98);
  EXPECT_GE(table.near.refused_share(), 95);
}

}  // namespace
}  // namespace homewarden::testing
