#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/dialogs.h"

namespace homewarden::view {

// Questions in windows of their own. They do not hold up the loop: the operation that asks waits,
// and its box goes when it is destroyed. A box also goes with the window that it belongs to; its
// question then has no answer.
class QtDialogs : public Dialogs {
 public:
  QtDialogs() = default;
  QtDialogs(const QtDialogs&) = delete;
  QtDialogs& operator=(const QtDialogs&) = delete;
  ~QtDialogs() override;

  // The window that boxes belong to; without one they stand alone.
  void set_parent(QWidget* parent) { parent_ = parent; }

  Task<Answer> message_box(Message message) override;
  Task<std::optional<std::string>> input_box(Question question) override;

 private:
  QPointer<QWidget> parent_;
};

}  // namespace homewarden::view
