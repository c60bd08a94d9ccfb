#include "platform/speech/speech_recogniser.h"

#include <exception>
#include <utility>

#include "platform/speech/listener.h"
#include "platform/speech/worker.h"

namespace homewarden::speech {
namespace {

// The half of the recogniser that lives on the program's thread. What the worker answers comes back
// by `post`, and counts only when it is about the listening that is going on.
class SpeechRecogniser : public Recogniser {
 public:
  SpeechRecogniser(Post post, AudioSource& source)
      : post_(std::move(post)),
        source_(source),
        self_(std::make_shared<SpeechRecogniser*>(this)),
        listener_(installed_model(), answers()) {}
  SpeechRecogniser(const SpeechRecogniser&) = delete;
  SpeechRecogniser& operator=(const SpeechRecogniser&) = delete;
  ~SpeechRecogniser() override {
    if (is_listening_) source_.stop();
    worker_.finish();
    self_.reset();
  }

  void set_commands(std::vector<VoiceCommand> commands, SpokenAs spoken_as) override {
    commands_ = std::move(commands);
    spoken_as_ = std::move(spoken_as);
    has_new_commands_ = true;
    if (is_prepared_) prepare();
  }

  void set_strictness(Strictness strictness) override { strictness_ = strictness; }

  void prepare() override {
    is_prepared_ = true;
    if (!std::exchange(has_new_commands_, false)) return;
    ask([this, commands = commands_, spoken_as = spoken_as_] {
      listener_.learn(commands, spoken_as);
    });
  }

  void listen() override;
  void stop() override;
  bool is_listening() const override { return is_listening_; }

 private:
  Listener::Answers answers();
  void finish(const std::string& trouble);
  void end(ListenEnd how, const std::string& trouble);

  // Calls the function in the worker's thread; what it throws ends the listening.
  void ask(std::function<void()> function) {
    worker_.ask([this, function = std::move(function)] {
      try {
        function();
      } catch (const std::exception& error) {
        listener_.fail(error.what());
      }
    });
  }
  // Calls the function from the event loop, with this object if it is still there.
  void tell(std::function<void(SpeechRecogniser& self)> function) const {
    post_([self = std::weak_ptr(self_), function = std::move(function)] {
      if (const auto alive = self.lock()) function(**alive);
    });
  }
  // As tell(), if the listening that the worker is at is the last one.
  void tell_of_listening(std::function<void(SpeechRecogniser& self)> function) const {
    tell([listening = workers_listening_, function = std::move(function)](SpeechRecogniser& self) {
      if (listening == self.listening_) function(self);
    });
  }

  const Post post_;
  AudioSource& source_;
  std::shared_ptr<SpeechRecogniser*> self_;
  std::vector<VoiceCommand> commands_;
  SpokenAs spoken_as_;
  bool has_new_commands_ = true;
  bool is_prepared_ = false;
  bool is_listening_ = false;
  Strictness strictness_ = Strictness::kNormal;
  int listening_ = 0;  // its number; a stopped one has none

  // The worker's.
  int workers_listening_ = 0;
  Listener listener_;
  Worker worker_;
};

Listener::Answers SpeechRecogniser::answers() {
  Listener::Answers answers;
  answers.level = [this](double decibels) {
    tell_of_listening([decibels](SpeechRecogniser& self) {
      if (self.is_listening_) self.level(decibels);
    });
  };
  answers.ended = [this](ListenEnd how, const std::string& trouble) {
    tell_of_listening([how, trouble](SpeechRecogniser& self) { self.end(how, trouble); });
  };
  answers.heard = [this](const Heard& what) {
    tell_of_listening([what](SpeechRecogniser& self) { self.heard(what); });
  };
  answers.guessed = [this](const std::vector<GuessedName>& names) {
    tell([names](SpeechRecogniser& self) { self.guessed(names); });
  };
  return answers;
}

void SpeechRecogniser::listen() {
  if (is_listening_) return;
  is_listening_ = true;
  prepare();
  ask([this, number = ++listening_, strictness = strictness_] {
    workers_listening_ = number;
    listener_.begin(strictness);
  });
  began();
  if (!is_listening_) return;  // whoever was told has stopped it
  source_.start(
      [this](SoundView samples) {
        ask([this, sound = Sound(samples.begin(), samples.end())] { listener_.take(sound); });
      },
      [this](const std::string& trouble) { finish(trouble); });
}

void SpeechRecogniser::finish(const std::string& trouble) {
  ask([this, trouble] { listener_.finish(trouble); });
}

void SpeechRecogniser::end(ListenEnd how, const std::string& trouble) {
  if (!is_listening_) return;
  is_listening_ = false;
  source_.stop();
  ended(how, trouble);
}

void SpeechRecogniser::stop() {
  if (!is_listening_) return;
  ++listening_;  // whatever is on its way about it
  ask([this] { listener_.drop(); });
  end(ListenEnd::kStopped, "");
}

}  // namespace

std::string recognition_trouble() {
  return trouble_with(installed_model());
}

std::unique_ptr<Recogniser> make_recogniser(Post post, AudioSource& source) {
  if (!recognition_trouble().empty()) return nullptr;
  return std::make_unique<SpeechRecogniser>(std::move(post), source);
}

}  // namespace homewarden::speech
