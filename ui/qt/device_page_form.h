#pragma once

#include <QWidget>

#include "ui/house_panel.h"

namespace homewarden::view {

// The form beside the cards in which a device or the room gets another name, room or address.
// Enter in the name saves, Escape leaves.
class ChangeForm : public QWidget {
 public:
  ChangeForm(ChangePanel& panel, QWidget* parent);

  // When it was last closed.
  bool had_keyboard() const { return had_keyboard_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  ChangePanel& panel_;
  bool had_keyboard_ = false;
};

}  // namespace homewarden::view
