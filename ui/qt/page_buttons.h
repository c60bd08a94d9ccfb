#pragma once

#include <QPushButton>
#include <QWidget>

#include "ui/house_panel.h"

class QHBoxLayout;

namespace homewarden::view {

// "11 to 17", with a badge of how many of them are on: shows this page of the room.
class PageButton : public QAbstractButton {
 public:
  PageButton(HousePanel& panel, int page, QWidget* parent);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

  void show_page(const RoomPage& page);
  void set_ends(bool first, bool last);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString badge() const;

  int on_ = 0;
  bool first_ = false;
  bool last_ = false;
};

// The pages of a room, as one control. Of very many those around the one that is shown, with an
// arrow at either end.
class PageButtons : public QWidget {
 public:
  PageButtons(HousePanel& panel, QWidget* parent);

  // Whether only the page that is shown has a button, between the arrows.
  void set_narrow(bool narrow);
  // How wide it is with all its buttons.
  int full_width() const;

 private:
  void show_pages();
  void turn(int by);

  HousePanel& panel_;
  QHBoxLayout* row_;
  QPushButton* back_;
  QPushButton* on_;
  QList<PageButton*> buttons_;
  bool narrow_ = false;
};

}  // namespace homewarden::view
