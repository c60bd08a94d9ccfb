// What speech costs: from the end of an utterance as it is found to its command in the event loop,
// memory before the first use, after it and after many utterances, and how long the words of 200
// devices take. Needs no microphone.
// usage: voice_bench [UTTERANCES]

#include <malloc.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <utility>

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

// Gives one sound after the other, as fast as it was said.
class Sounds : public speech::AudioSource {
 public:
  Sounds() {
    beat_.setTimerType(Qt::PreciseTimer);
    beat_.setInterval(20);
    QObject::connect(&beat_, &QTimer::timeout, &beat_, [this] { give(); });
  }
  void start(Samples samples, Ended ended) override {
    samples_ = std::move(samples);
    ended_ = std::move(ended);
    given_ = 0;
    since_ = Clock::now();
    beat_.start();
  }
  void stop() override { beat_.stop(); }
  double milliseconds_since_start() const { return milliseconds_since(since_); }
  testing::Sound next;

 private:
  void give() {
    const auto due =
        static_cast<std::size_t>(milliseconds_since(since_) * testing::kSoundRate / 1000);
    const std::size_t until = std::min(due, next.size());
    const std::size_t from = std::exchange(given_, until);
    samples_(speech::SoundView(next).subspan(from, until - from));
    if (given_ < next.size() || !beat_.isActive()) return;
    beat_.stop();
    ended_("");
  }

  QTimer beat_;
  Samples samples_;
  Ended ended_;
  Clock::time_point since_;
  std::size_t given_ = 0;
};

constexpr double kQuiet = 1.2;  // seconds behind the speech

class Bench {
 public:
  Bench() {
    recogniser_->ended.connect([this](ListenEnd, const std::string&) { end_ = Clock::now(); });
    recogniser_->heard.connect([this](const Heard& heard) {
      times_.push_back(milliseconds_since(end_));
      const double spoken = 1000.0 * static_cast<double>(sounds_.next.size()) / testing::kSoundRate;
      from_last_sound_.push_back(sounds_.milliseconds_since_start() - (spoken - 1000 * kQuiet));
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
          testing::say(testing::said_in_full(commands[i]), testing::kVoices[i % 4]), 0.8, kQuiet));
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
    std::sort(from_last_sound_.begin(), from_last_sound_.end());
    std::printf("last sound to command: median %.0f ms, worst %.0f ms\n",
                from_last_sound_[from_last_sound_.size() / 2], from_last_sound_.back());
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
  Sounds sounds_;
  std::unique_ptr<Recogniser> recogniser_ = speech::make_recogniser(
      [this](std::function<void()> function) { loop_.post(std::move(function)); }, sounds_);
  QEventLoop wait_;
  Clock::time_point end_;
  std::vector<double> times_;
  std::vector<double> from_last_sound_;
  int accepted_ = 0;
};

}  // namespace
}  // namespace homewarden

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  homewarden::Bench().run(argc > 1 ? std::max(1, std::atoi(argv[1])) : 500);
}
