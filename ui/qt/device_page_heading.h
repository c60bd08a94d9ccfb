#pragma once

#include <QWidget>

#include "ui/house_panel.h"
#include "ui/qt/page_buttons.h"

namespace homewarden::view {

// The name of the room and how many of its devices are on; its pages, "Turn room off" and its menu.
class RoomHeading : public QWidget {
 public:
  RoomHeading(HousePanel& panel, QWidget* title, QWidget* parent);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  int words_width() const;
  void lay_out();

  HousePanel& panel_;
  QWidget* words_;
  PageButtons* pages_;
  QWidget* actions_;
};

}  // namespace homewarden::view
