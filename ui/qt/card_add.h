#pragma once

#include <QAbstractButton>

#include "ui/house_panel.h"

namespace homewarden::view {

// The card behind the last device of a room: leads to a new one.
class AddCard : public QAbstractButton {
 public:
  AddCard(HousePanel& panel, QWidget* parent);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool shows_focus_ = false;
};

}  // namespace homewarden::view
