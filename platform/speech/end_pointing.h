#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include "platform/speech/sound.h"

namespace homewarden::speech {

// Finds the one utterance in what a microphone hears, by its level over what is heard before it,
// and keeps it. What stands out little is people talking elsewhere; what is short is a knock. Both
// are waited through.
class EndPointer {
 public:
  // Where it lies, in frames of 10 ms, with a little of what was before and behind it.
  struct Place {
    std::size_t begin = 0;
    std::size_t end = 0;
    // By how many decibels the loudest of it stands out from what is heard around it: 40 and more
    // in a quiet room, 18 where other people talk 10 dB less loud.
    double contrast = 0;
  };

  // True when the utterance has ended; what comes then is ignored. Any number of samples.
  bool take(SoundView samples);

  // Nothing more is coming: what has been said so far is the utterance.
  void cut();

  bool has_ended() const { return has_ended_; }

  // Loudness of the last 30 ms, in decibels as of level_of().
  double level() const { return levels_.empty() ? 0 : levels_.back(); }

  // Nothing before its end, and when nobody spoke.
  std::optional<Place> utterance() const { return utterance_; }
  // Where it probably lies, when it has been quiet for half the time that ends it; else nothing.
  std::optional<Place> likely_utterance() const;
  Sound sound_of(const Place& place) const;

 private:
  struct Stretch {
    std::size_t first = 0;
    std::size_t end = 0;
    std::size_t loud = 0;  // frames in it
  };

  void take_frame();
  void look_for_start();
  void look_for_end();
  bool is_quiet_for(std::size_t frames) const;
  void end();
  std::optional<Place> measure() const;
  Stretch longest_stretch() const;
  void wait_on();

  Sound samples_;               // all that came
  std::size_t frames_ = 0;      // of them, looked at
  std::vector<double> raw_;     // level of each frame
  std::vector<double> levels_;  // the same, smoothed
  std::deque<double> outside_;  // of the last frames outside speech
  bool is_speaking_ = false;
  bool has_ended_ = false;
  std::size_t waiting_from_ = 0;  // frames before it are done with
  std::size_t start_ = 0;         // first frame of the speech
  double floor_ = 0;              // under the speech
  double loud_ = 0;               // what belongs to the speech
  std::optional<Place> utterance_;
};

}  // namespace homewarden::speech
