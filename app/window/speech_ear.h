#pragma once

#include <memory>
#include <string>

#include "platform/microphones.h"
#include "platform/qt/qt_loop.h"
#include "platform/recogniser.h"

namespace homewarden {

// What listens on this machine. Everything that the recogniser needs goes when it does.
struct SpeechEar {
  std::string trouble;  // why there is none, in words for a person
  std::shared_ptr<Microphones> microphones;
  std::shared_ptr<Recogniser> recogniser;  // nullptr for none
};

// The loop must outlive it. Loads nothing.
SpeechEar find_ear(qt::QtLoop& loop);

}  // namespace homewarden
