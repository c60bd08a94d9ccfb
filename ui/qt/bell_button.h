#pragma once

#include <QAbstractButton>

#include "ui/message_panel.h"

namespace homewarden::view {

// Opens the list of messages; says how many are unread, in red when one of them is a failure.
class BellButton : public QAbstractButton {
 public:
  BellButton(MessagePanel& panel, QWidget* parent);

  // Without its word, where there is little room.
  void set_short(bool is_short);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void show_unread();

  MessagePanel& panel_;
  int unread_ = 0;
  bool failed_ = false;
  bool short_ = false;
};

}  // namespace homewarden::view
