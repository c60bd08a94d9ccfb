// How well the talking house is understood: every command in every voice of Flite, clean and among
// people who talk, sentences that are no command, and what goes wrong. With other voices that
// espeak-ng has, such as en-us and en-gb, the same for these.
// usage: voice_table [VOICE...]

#include <string>
#include <vector>

#include "tests/speech/talk/recognition_table.h"

int main(int argc, char** argv) {
  using namespace homewarden::testing;
  std::vector<std::string> voices(argv + 1, argv + argc);
  if (voices.empty()) voices = {"slt", "rms", "awb", "kal16"};
  recognise(voices, Extent::kEverything).print();
}
