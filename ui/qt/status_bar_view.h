#pragma once

#include <QLabel>
#include <QStatusBar>

#include "ui/controls.h"

namespace homewarden::view {

// A text in one line, cut with an ellipsis where the room ends; the whole text is its tool tip.
class ElidedLabel : public QLabel {
 public:
  using QLabel::QLabel;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// The clock, the status line, and the state of the interface with a light that says the same.
class StatusBarView : public QStatusBar {
 public:
  explicit StatusBarView(StatusBar& control, QWidget* parent = nullptr);

 private:
  void show_state(const QString& state);

  QLabel* clock_;
  ElidedLabel* status_;
  QLabel* light_;
  QLabel* state_;
};

}  // namespace homewarden::view
