#include "voice/figure_talk.h"

#include <utility>

namespace homewarden {
namespace {

using namespace std::chrono_literals;

constexpr auto kPoseLasts = 3s;
constexpr auto kWordsLast = 8s;

}  // namespace

FigureTalk::FigureTalk(FrmCharacter& form, EventLoop& loop) : form_(form), loop_(loop) {
  form.cmd_yes.click.connect([this] { answer(true); });
  form.cmd_no.click.connect([this] { answer(false); });
}

FigureTalk::~FigureTalk() {
  loop_.cancel(calm_);
  loop_.cancel(silent_);
}

void FigureTalk::show() {
  form_.visible = true;
}

void FigureTalk::hide() {
  withdraw();
  form_.lab_bubble.caption = std::string();
  form_.visible = false;
}

void FigureTalk::listen() {
  withdraw();
  loop_.cancel(calm_);
  form_.lab_bubble.caption = std::string();
  form_.pose = Pose::kListening;
}

void FigureTalk::be_idle() {
  loop_.cancel(calm_);
  form_.pose = Pose::kIdle;
}

void FigureTalk::say(const std::string& text, Pose pose) {
  if (form_.asking) return;
  form_.pose = pose;
  later(calm_, kPoseLasts, [this] { form_.pose = Pose::kIdle; });
  mention(text);
}

void FigureTalk::mention(const std::string& text) {
  form_.lab_bubble.caption = text;
  later(silent_, kWordsLast, [this] { form_.lab_bubble.caption = std::string(); });
}

void FigureTalk::ask(const std::string& text, std::function<void(bool yes)> answered) {
  withdraw();
  if (!form_.visible) return answered(false);
  loop_.cancel(calm_);
  form_.pose = Pose::kNotUnderstood;
  answered_ = std::move(answered);
  form_.lab_bubble.caption = text;
  form_.asking = true;
  later(silent_, kWordsLast, [this] { answer(false); });
}

void FigureTalk::answer(bool yes) {
  if (!form_.asking) return;
  const auto answered = std::exchange(answered_, nullptr);
  withdraw();
  be_idle();
  answered(yes);
}

void FigureTalk::withdraw() {
  loop_.cancel(silent_);
  if (!form_.asking) return;
  answered_ = nullptr;
  form_.asking = false;
  form_.lab_bubble.caption = std::string();
}

void FigureTalk::later(EventLoop::CallId& call, std::chrono::milliseconds delay,
                       std::function<void()> function) {
  loop_.cancel(call);
  call = loop_.call_after(delay, std::move(function));
}

}  // namespace homewarden
