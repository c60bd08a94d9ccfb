#pragma once

#include <functional>
#include <memory>

#include "platform/recogniser.h"
#include "platform/speech/audio_source.h"

namespace homewarden::speech {

// Calls a function from the event loop soon. May be called from any thread.
using Post = std::function<void(std::function<void()> function)>;

// Why nothing can be recognised on this machine, for a person: the program was built without the
// recogniser, or the language model is not installed. "" when it can. Loads nothing.
std::string recognition_trouble();

// The recogniser, with a thread of its own from the first listening on. The source must outlive it,
// and what is behind `post` as well. Null where recognition_trouble() says why.
std::unique_ptr<Recogniser> make_recogniser(Post post, AudioSource& source);

}  // namespace homewarden::speech
