#pragma once

#include <QMenu>
#include <QToolButton>

#include "ui/house_panel.h"

namespace homewarden::view {

// What can be done to the device of a slot beside switching it.
void fill_card_menu(QMenu& menu, HousePanel& panel, int slot);
// The same of the room.
void fill_room_menu(QMenu& menu, HousePanel& panel);

// The button with three dots in the corner of a card, there for whoever points at the card or has
// gone to it with a key.
class CardMenuButton : public QToolButton {
 public:
  explicit CardMenuButton(QWidget* card);

  void set_shown(bool shown);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool shown_ = false;
};

}  // namespace homewarden::view
