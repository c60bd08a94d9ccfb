#pragma once

#include <functional>
#include <string>

#include "platform/event_loop.h"
#include "ui/frm_character.h"

namespace homewarden {

// What the figure shows and says. One thing at a time: what is said takes the place of what was
// said before, and a question stays until it is answered, withdrawn or eight seconds old.
class FigureTalk {
 public:
  FigureTalk(FrmCharacter& form, EventLoop& loop);
  FigureTalk(const FigureTalk&) = delete;
  FigureTalk& operator=(const FigureTalk&) = delete;
  ~FigureTalk();

  void show();
  // Takes back what it has asked.
  void hide();

  // Stays so until something else is called. Takes back what it has asked.
  void listen();
  void be_idle();
  // Looks so for about three seconds; the words stay a little longer. Not said while it asks.
  void say(const std::string& text, Pose pose);
  // Only the words: how it looks stays.
  void mention(const std::string& text);
  // Calls the function with what is answered; not at all when the question is taken back. Nobody
  // can see one that is hidden: that is answered with no.
  void ask(const std::string& text, std::function<void(bool yes)> answered);

 private:
  void answer(bool yes);
  void withdraw();
  void later(EventLoop::CallId& call, std::chrono::milliseconds delay,
             std::function<void()> function);

  FrmCharacter& form_;
  EventLoop& loop_;
  std::function<void(bool)> answered_;
  EventLoop::CallId calm_ = 0;    // the pose
  EventLoop::CallId silent_ = 0;  // the bubble
};

}  // namespace homewarden
