#pragma once

#include <QAbstractButton>

#include "ui/settings_panels.h"

namespace homewarden::view {

// The microphone in the window's side. While something listens it is filled, with a ring as wide as
// it is loud. Hidden where there is no voice.
class ListenButton : public QAbstractButton {
 public:
  enum class Frame { kNone, kField };  // kField: beside a field, and framed like it

  ListenButton(SpeechPanel& panel, int side, Frame frame, QWidget* parent);
  QSize sizeHint() const override { return {side_, side_}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void show_state();

  SpeechPanel& panel_;
  int side_;
  Frame frame_;
};

}  // namespace homewarden::view
