#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/single_instance.h"
#include "platform/sound_player.h"
#include "platform/waiting.h"
#include "platform/window_call.h"

namespace homewarden::testing {

// A person who answers at once, as told beforehand, and remembers what was shown; or one who is not
// there, whose boxes stay open.
class FakeDialogs : public Dialogs {
 public:
  explicit FakeDialogs(EventLoop& loop) : loop_(loop) {}

  Task<Answer> message_box(Message message) override {
    messages.push_back(message.title + ": " + message.text);
    last = message;
    const Open box(*this);
    co_await Delay(loop_, answer_time());
    const bool asks = message.buttons == MessageButtons::kYesNo;
    co_return asks ? (says_yes ? Answer::kYes : Answer::kNo) : Answer::kOk;
  }

  Task<std::optional<std::string>> input_box(Question question) override {
    messages.push_back(question.title + "? " + question.prompt + " [" + question.initial + "]");
    const Open box(*this);
    co_await Delay(loop_, answer_time());
    if (typed.empty()) co_return std::nullopt;
    std::string answer = typed.front();
    typed.pop_front();
    co_return answer;
  }

  std::vector<std::string> messages;
  Message last;
  std::deque<std::string> typed;
  bool says_yes = true;
  bool is_away = false;
  int open_boxes = 0;

 private:
  struct Open {
    explicit Open(FakeDialogs& person) : person_(person) { ++person_.open_boxes; }
    Open(const Open&) = delete;
    ~Open() { --person_.open_boxes; }
    FakeDialogs& person_;
  };
  std::chrono::milliseconds answer_time() const {
    return is_away ? std::chrono::hours(1000) : std::chrono::hours(0);
  }

  EventLoop& loop_;
};

class FakeDesktop : public Desktop {
 public:
  float screen_width() const override { return width; }
  float screen_height() const override { return height; }
  bool finds_browser() override { return has_browser; }
  bool open_address(const std::string& address) override {
    opened.push_back(address);
    return browser_starts;
  }

  bool start_demo() override {
    ++demos;
    return true;
  }

  float width = 28800;
  float height = 16200;
  bool has_browser = true;
  bool browser_starts = true;
  std::vector<std::string> opened;
  int demos = 0;
};

class FakeSounds : public SoundPlayer {
 public:
  void play(const std::filesystem::path& file) override {
    played.push_back(file.filename().string());
  }
  std::vector<std::string> played;
};

class FakeInstance : public SingleInstance {
 public:
  bool take() override {
    taken = others == 0;
    if (!taken) --others;
    return taken;
  }
  void give_back() override { taken = false; }
  bool another_is_running() override { return others > 0; }

  int others = 0;  // how many times another copy keeps this one from being the running one
  bool taken = false;
};

class FakeWindowCall : public WindowCall {
 public:
  bool ask() override { return answered; }
  void listen(std::function<void()> function) override { show = std::move(function); }
  void stop_listening() override { show = nullptr; }

  bool answered = false;       // by another copy that is asked
  std::function<void()> show;  // what another copy asks for; empty while nobody listens
};

}  // namespace homewarden::testing
