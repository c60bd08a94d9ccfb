// In place of all else in this part where its libraries are not.

#include "platform/speech/speech_recogniser.h"

namespace homewarden::speech {

std::string recognition_trouble() {
  return "This Homewarden was built without speech recognition.";
}

std::unique_ptr<Recogniser> make_recogniser(Post, AudioSource&) {
  return nullptr;
}

}  // namespace homewarden::speech
