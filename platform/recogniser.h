#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/signal.h"
#include "platform/voice_command.h"

namespace homewarden {

// From the name of a room or device to how it is said, in English spelling: "Zoe" to "zo ee".
using SpokenAs = std::map<std::string, std::string>;

// How sure it has to be before a command is carried out.
enum class Strictness { kStrict, kNormal, kLenient };

// What was made of one utterance.
struct Heard {
  enum class Verdict {
    kAccepted,  // carry it out
    kNearly,    // ask "Did you mean ...?"
    kRefused,   // nothing that is known, or not surely enough
  };
  Verdict verdict = Verdict::kRefused;
  VoiceCommand command;  // the one that comes nearest; without a name when none does
  std::string words;     // "kitchen light off", in small letters; "" when nothing was near
};

// How listening ended.
enum class ListenEnd {
  kUtterance,  // something was said; what it was follows
  kNothing,    // nothing was said in eight seconds, or the sound ended before
  kStopped,    // by stop()
  kTrouble,    // no sound, or no recognition
};

// A name with words that no dictionary has. How these sound was guessed by their spelling; a
// respelling in SpokenAs may do better.
struct GuessedName {
  std::string name;
  std::vector<std::string> words;

  bool operator==(const GuessedName&) const = default;
};

// Listens for one command at a time. Nothing is loaded and no thread runs before the first
// listening. All members return at once, and all signals come from the event loop, but for began
// and for ended within stop().
class Recogniser {
 public:
  virtual ~Recogniser() = default;

  // All that can be said from now on; also while it listens, for what is being said then. A command
  // that cannot be said (its names have no words, or another has the same) stops no other.
  virtual void set_commands(std::vector<VoiceCommand> commands, SpokenAs spoken_as) = 0;

  // From the next utterance on. It begins as kNormal.
  virtual void set_strictness(Strictness strictness) = 0;

  // Listens until something was said, at most eight seconds. While it listens nothing happens.
  virtual void listen() = 0;

  // Nothing happens while it does not listen. What was said so far is forgotten.
  virtual void stop() = 0;

  // From began() to ended().
  virtual bool is_listening() const = 0;

  // Loads what recognition needs and tells of the guessed names, as the first listening would.
  virtual void prepare() = 0;

  // Within listen(), before the microphone is asked for sound.
  Signal<> began;
  // The loudness in decibels over the smallest step of a sample, some 20 times a second while it
  // listens: 20 in a quiet room, 50 to 70 for speech, 90 is too loud.
  Signal<double> level;
  // The text says what is wrong, for a person; empty but for kTrouble.
  Signal<ListenEnd, const std::string&> ended;
  // Once after each end as kUtterance, unless the next listening has begun by then.
  Signal<const Heard&> heard;
  // Whenever the commands have been taken in, with all guessed names of theirs, maybe none.
  Signal<const std::vector<GuessedName>&> guessed;
};

}  // namespace homewarden
