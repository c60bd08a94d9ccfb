#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include "platform/speech/sound.h"

namespace homewarden::speech {

// Finds the one utterance in what a microphone hears, by its level over what is heard before it,
// and keeps it. What stands out little is people talking elsewhere; what is short is a knock. Both
// are waited through.
class EndPointer {
 public:
  // True when the utterance has ended; what comes then is ignored. Any number of samples.
  bool take(SoundView samples);

  // Nothing more is coming: what has been said so far is the utterance.
  void cut();

  bool is_speaking() const { return is_speaking_; }
  bool has_ended() const { return has_ended_; }

  // Loudness of the last 30 ms, in decibels as of level_of().
  double level() const { return levels_.empty() ? 0 : levels_.back(); }

  // With a little of what was before and behind it. Empty before its end, and when nobody spoke.
  Sound utterance() const;

  // By how many decibels the loudest of it stands out from what is heard around it: 40 and more in
  // a quiet room, 18 where other people talk 10 dB less loud.
  double contrast() const { return contrast_; }

 private:
  struct Stretch {
    std::size_t first = 0;
    std::size_t end = 0;
    std::size_t loud = 0;  // frames in it
  };

  void take_frame();
  void look_for_start();
  void look_for_end();
  void end();
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
  std::size_t begin_ = 0;         // what is kept of it
  std::size_t end_ = 0;
  double contrast_ = 0;
};

}  // namespace homewarden::speech
