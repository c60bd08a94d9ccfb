#pragma once

#include <filesystem>
#include <string>

namespace homewarden::speech {

// Where the language to be recognised lies: an acoustic model and a dictionary.
struct VoiceModel {
  std::filesystem::path acoustic;
  std::filesystem::path dictionary;
};

// The American English model in its Debian package's folder.
VoiceModel installed_model();

// What is missing of a model, for a person; "" when all of it is there. Looks at names only.
std::string trouble_with(const VoiceModel& model);

}  // namespace homewarden::speech
