#pragma once

#include <QLabel>
#include <QPushButton>
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

// The clock, the status line, a link that says how many commands could not be sent, and the state
// of the interface with a light that says the same.
class StatusBarView : public QStatusBar {
 public:
  explicit StatusBarView(StatusBar& control, QWidget* parent = nullptr);

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void show_state(const StatusBar& control);
  void fit_state();
  void recolour();

  QLabel* clock_;
  ElidedLabel* status_;
  QPushButton* unsent_;
  QLabel* light_;
  ElidedLabel* state_;
};

}  // namespace homewarden::view
