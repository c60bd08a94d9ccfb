#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

#include "ui/message_panel.h"
#include "ui/qt/drop_shadow.h"

namespace homewarden::view {

// The message that has just appeared, at the foot of the page and over everything else of the
// window, with what undoes it. The keyboard reaches it like any button; Escape puts it away.
class MessageToast : public QWidget {
 public:
  // Stands at the foot of `page`, which is within the window, and follows its size.
  MessageToast(MessagePanel& panel, QWidget* window, QWidget* page);

  bool failed() const { return panel_.message.get().failed; }
  double opacity() const { return opacity_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void show_message();
  void appear();
  void lay_out();
  void hold();
  void leave_focus();

  MessagePanel& panel_;
  QWidget* page_;
  DropShadow* shadow_;
  QAbstractButton* undo_;
  QAbstractButton* close_;
  QVariantAnimation rising_;
  QRect words_;
  double opacity_ = 1;
  QPointer<QWidget> former_;  // had the keyboard before
};

}  // namespace homewarden::view
