#pragma once

#include <QListWidget>
#include <QPointer>
#include <QWidget>

#include "ui/message_panel.h"
#include "ui/qt/drop_shadow.h"

namespace homewarden::view {

class MessageRows;

// All messages, in a box over the foot of the window. A press beside it and Escape leave it; Enter
// undoes what the chosen one tells of.
class MessageListView : public QWidget {
 public:
  // Covers `window` and follows its size; the box ends above its lower edge by what the bar at its
  // foot takes.
  MessageListView(MessagePanel& panel, QWidget* window, QWidget* foot);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void open(bool visible);
  void show_messages();
  void lay_out();
  void undo(int row);

  MessagePanel& panel_;
  QWidget* foot_;
  DropShadow* shadow_;
  QWidget* box_;
  QListWidget* list_;
  MessageRows* rows_;
  QPointer<QWidget> former_;  // had the keyboard before
};

}  // namespace homewarden::view
