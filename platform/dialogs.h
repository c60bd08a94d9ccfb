#pragma once

#include <optional>
#include <string>

#include "base/task.h"

namespace homewarden {

enum class MessageIcon { kNone, kInformation, kExclamation, kCritical, kQuestion };
enum class MessageButtons { kOk, kYesNo };
enum class Answer { kOk, kYes, kNo };

struct Message {
  std::string text;  // lines separated by "\n" or CR LF
  std::string title;
  MessageIcon icon = MessageIcon::kNone;
  MessageButtons buttons = MessageButtons::kOk;
  Answer preselected = Answer::kYes;  // where Yes and No are offered: what Enter answers
};

struct Question {
  std::string prompt;
  std::string title;
  std::string initial;
  bool secret = false;  // the typing is not shown
};

// Asks a person. The operation that asks waits; everything else goes on. Ending the operation
// closes its box without an answer.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  // Closing the box without a choice is Ok, or No where Yes and No are offered.
  virtual Task<Answer> message_box(Message message) = 0;

  // The text typed, which may be ""; nothing when the box was cancelled. Letters that the code page
  // does not have come as kUnknownCharacter.
  virtual Task<std::optional<std::string>> input_box(Question question) = 0;
};

}  // namespace homewarden
