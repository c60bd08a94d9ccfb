#pragma once

#include <QLabel>
#include <QStatusBar>
#include <functional>

#include "ui/controls.h"
#include "ui/message_panel.h"
#include "ui/qt/bell_button.h"
#include "ui/qt/link_button.h"

namespace homewarden::view {

// A text in one line, cut with an ellipsis where the room ends; the whole text is its tool tip.
class ElidedLabel : public QLabel {
 public:
  using QLabel::QLabel;
  QSize minimumSizeHint() const override;
  // What the text is about stands before it, in a stronger colour, and is cut first: what happened
  // matters more than a long name.
  void set_text(const QString& subject, const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString subject_;
};

// The clock, the status line, a link that says how many commands could not be sent, the state of
// the interface with a light that says the same, and the bell of the messages.
class StatusBarView : public QStatusBar {
 public:
  StatusBarView(StatusBar& control, MessagePanel& messages, QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void show_state(const StatusBar& control);
  void fit_state();
  void resize_words();

  std::function<void()> redraw_light_;  // in the colours of now

  QLabel* clock_;
  ElidedLabel* status_;
  LinkButton* unsent_;
  QLabel* light_;
  ElidedLabel* state_;
  BellButton* bell_;
};

}  // namespace homewarden::view
