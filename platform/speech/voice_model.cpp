#include "platform/speech/voice_model.h"

#include <system_error>
#include <vector>

namespace homewarden::speech {

VoiceModel installed_model() {
  const std::filesystem::path folder = "/usr/share/pocketsphinx/model/en-us";
  return {folder / "en-us", folder / "cmudict-en-us.dict"};
}

std::string trouble_with(const VoiceModel& model) {
  std::error_code error;
  std::vector<std::filesystem::path> files = {model.dictionary};
  for (const char* name :
       {"mdef", "means", "variances", "transition_matrices", "sendump", "feat.params"})
    files.push_back(model.acoustic / name);
  for (const auto& file : files)
    if (!std::filesystem::is_regular_file(file, error))
      return "The speech model is missing: " + file.string() +
             " is not there. It comes with the package pocketsphinx-en-us.";
  return "";
}

}  // namespace homewarden::speech
