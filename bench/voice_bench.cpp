// What speech costs: from the end of an utterance as it is found to its command in the event loop,
// memory before the first use, after it and after many utterances, and how long the words of 200
// devices take. Needs no microphone.
// usage: voice_bench [UTTERANCES]

#include <malloc.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "platform/qt/qt_loop.h"
#include "platform/speech/speech_recogniser.h"
#include "tests/speech/talk/house_talk.h"
#include "tests/speech/talk/synthetic_speech.h"

namespace homewarden {
namespace {

using Clock = std::chrono::steady_clock;

double milliseconds_since(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// The proportional share of this process, in MB.
double memory() {
  malloc_trim(0);
  std::ifstream file("/proc/self/smaps_rollup");
  std::string word;
  while (file >> word)
    if (word == "Pss:") {
      double kilobytes = 0;
      file >> kilobytes;
      return kilobytes / 1024;
    }
  return 0;
}

// Gives one sound after the other, at once.
class Sounds : public speech::AudioSource {
 public:
  explicit Sounds(qt::QtLoop& loop) : loop_(loop) {}
  void start(Samples samples, Ended ended) override {
    loop_.post([this, samples = std::move(samples), ended = std::move(ended)] {
      samples(next);
      ended("");
    });
  }
  void stop() override {}
  testing::Sound next;

 private:
  qt::QtLoop& loop_;
};

class Bench {
 public:
  Bench() {
    recogniser_->ended.connect([this](ListenEnd, const std::string&) { end_ = Clock::now(); });
    recogniser_->heard.connect([this](const Heard& heard) {
      times_.push_back(milliseconds_since(end_));
      accepted_ += heard.verdict == Heard::Verdict::kAccepted;
      wait_.quit();
    });
    recogniser_->guessed.connect([this](const std::vector<GuessedName>&) { wait_.quit(); });
  }

  void run(int utterances) {
    const std::vector<VoiceCommand> commands = testing::talking_house();
    std::vector<testing::Sound> sounds;
    for (std::size_t i = 0; i < commands.size(); i += 5)
      sounds.push_back(testing::in_a_room(
          testing::say(testing::said_in_full(commands[i]), testing::kVoices[i % 4]), 0.8, 1.2));
    const double before = memory();
    recogniser_->set_commands(commands, {});
    listen(sounds[0]);
    const double first = memory();
    for (int i = 1; i < utterances; ++i)
      listen(sounds[static_cast<std::size_t>(i) % sounds.size()]);
    const double last = memory();
    std::printf("memory: the first utterance takes %.1f MB, %d more %.1f MB\n", first - before,
                utterances - 1, last - first);
    std::sort(times_.begin(), times_.end());
    std::printf(
        "end of speech to command: median %.0f ms, 99th percentile %.0f ms, worst %.0f ms"
        " (%d of %zu carried out)\n",
        times_[times_.size() / 2], times_[times_.size() * 99 / 100], times_.back(), accepted_,
        times_.size());
    large_house();
  }

 private:
  void listen(const testing::Sound& sound) {
    sounds_.next = sound;
    recogniser_->listen();
    const std::size_t count = times_.size();
    while (times_.size() == count) wait_.exec();
  }

  void large_house() {
    std::vector<VoiceCommand> commands = testing::fixed_commands();
    for (int room = 0; room < 20; ++room)
      for (int device = 0; device < 10; ++device)
        for (VoiceCommand& one : testing::device_commands(
                 std::string(kRooms[room]), std::string(kDevices[device]),
                 std::string(1, static_cast<char>('A' + (room * 10 + device) / 16)) +
                     std::to_string((room * 10 + device) % 16 + 1)))
          commands.push_back(std::move(one));
    for (const char* what : {"200 devices, words that are new", "200 devices, one renamed"}) {
      const auto start = Clock::now();
      recogniser_->set_commands(commands, {});
      const double held = milliseconds_since(start);
      wait_.exec();
      std::printf("%s: %.0f ms, of which the window waits %.1f ms\n", what,
                  milliseconds_since(start), held);
      commands.back().voice = "[Cancel] Attic [Aquarium]";
    }
  }

  static constexpr const char* kRooms[] = {
      "Kitchen", "Hall",     "Office",  "Attic",       "Cellar",      "Garage",    "Garden",
      "Nursery", "Library",  "Studio",  "Porch",       "Laundry",     "Pantry",    "Den",
      "Balcony", "Bathroom", "Bedroom", "Living Room", "Dining Room", "Guest Room"};
  static constexpr const char* kDevices[] = {
      "Ceiling Light", "Floor Lamp",  "Heater",   "Fan",        "Radio",
      "Window Blind",  "Night Light", "Socket 1", "Zoe's Lamp", "Television"};

  qt::QtLoop loop_;
  Sounds sounds_{loop_};
  std::unique_ptr<Recogniser> recogniser_ = speech::make_recogniser(
      [this](std::function<void()> function) { loop_.post(std::move(function)); }, sounds_);
  QEventLoop wait_;
  Clock::time_point end_;
  std::vector<double> times_;
  int accepted_ = 0;
};

}  // namespace
}  // namespace homewarden

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  homewarden::Bench().run(argc > 1 ? std::max(1, std::atoi(argv[1])) : 500);
}
