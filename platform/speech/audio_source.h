#pragma once

#include <functional>
#include <string>

#include "platform/speech/sound.h"

namespace homewarden::speech {

// Where sound comes from. All on the program's thread.
class AudioSource {
 public:
  using Samples = std::function<void(SoundView samples)>;
  // What is wrong, for a person; "" when there simply is no more.
  using Ended = std::function<void(const std::string& trouble)>;

  virtual ~AudioSource() = default;

  // Calls the first function from the event loop as sound comes, in any portions, and the second
  // once when the source ends by itself, also when it cannot begin. Starting again begins anew.
  virtual void start(Samples samples, Ended ended) = 0;

  // Neither function is called any more. May be called by them.
  virtual void stop() = 0;
};

}  // namespace homewarden::speech
