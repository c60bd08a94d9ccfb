#pragma once

#include <filesystem>
#include <memory>

#include "app/window/speech_ear.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "platform/speech_agent.h"
#include "ui/frm_main.h"

class QWidget;

namespace homewarden::view {
class SpeechView;
}

namespace homewarden {

// Speech with its faces, or what says why there is none.
class SpeechParts {
 public:
  virtual ~SpeechParts() = default;

  virtual SpeechAgent& agent() = 0;
  // What is seen of it beside the window, which must outlive the result, as must this and the form.
  // nullptr where there is nothing to be seen. To be called before the program starts.
  virtual std::unique_ptr<view::SpeechView> show(FrmMain& form, QWidget* window) = 0;
};

// Characters are read from the folder.
std::unique_ptr<SpeechParts> make_speech(SpeechEar ear, Files& files, Registry& registry,
                                         EventLoop& loop, const std::filesystem::path& folder);

}  // namespace homewarden
