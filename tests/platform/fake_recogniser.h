#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/event_loop.h"
#include "platform/microphones.h"
#include "platform/recogniser.h"

namespace homewarden::testing {

// Hears what a test lets a person say. As the real one it says that it has begun within the call,
// and everything else from the loop.
class FakeRecogniser : public Recogniser {
 public:
  explicit FakeRecogniser(EventLoop& loop) : loop_(loop) {}

  void set_commands(std::vector<VoiceCommand> now, SpokenAs as) override {
    commands = std::move(now);
    spoken_as = std::move(as);
    ++times_set;
  }
  void set_strictness(Strictness now) override { strictness = now; }
  void listen() override {
    if (listening_) return;
    if (!trouble.empty()) {
      loop_.call_after({}, [this] { ended(ListenEnd::kTrouble, trouble); });
      return;
    }
    listening_ = true;
    ++times_listened;
    began();
  }
  void stop() override {
    if (!listening_) return;
    loop_.call_after({}, [this] { end(ListenEnd::kStopped); });
  }
  bool is_listening() const override { return listening_; }
  void prepare() override { prepared = true; }

  // A person says something while it listens: the command with this caption, or other words.
  void say(Heard::Verdict verdict, const std::string& words) {
    Heard what{verdict, {}, words};
    for (const VoiceCommand& command : commands)
      if (command.caption == words) what.command = command;
    end(ListenEnd::kUtterance);
    heard(what);
  }
  void end(ListenEnd how) {
    listening_ = false;
    ended(how, "");
  }

  std::vector<VoiceCommand> commands;
  SpokenAs spoken_as;
  Strictness strictness = Strictness::kNormal;
  std::string trouble;  // of the listenings that follow
  int times_set = 0;
  int times_listened = 0;
  bool prepared = false;

 private:
  EventLoop& loop_;
  bool listening_ = false;
};

struct FakeMicrophones : Microphones {
  std::vector<MicrophoneName> names() override { return all; }
  void choose(const std::string& id) override { chosen = id; }

  std::vector<MicrophoneName> all{{"usb-1", "Table microphone"}, {"pci-0", "Built-in"}};
  std::string chosen;
};

}  // namespace homewarden::testing
