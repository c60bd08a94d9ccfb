#pragma once

#include <QAbstractButton>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QVariantAnimation>

#include "ui/house_panel.h"
#include "ui/qt/card_menu.h"

namespace homewarden::view {

// One slot of the device panel, and one target: picture, name, what it is or becomes, a slider. A
// press anywhere switches the device. Hidden while the slot is empty. A press or a move that is
// under way when the slot gets another device is dropped: it was not meant for that one.
class DeviceCard : public QAbstractButton {
 public:
  // Around the card proper, where the ring goes that says that it has the focus.
  static constexpr int kRing = 4;

  DeviceCard(HousePanel& panel, std::size_t slot, QWidget* parent = nullptr);
  QSize sizeHint() const override;
  // As low as its words allow.
  QSize minimumSizeHint() const override;

  // What the pill says.
  QString words() const;
  // What a screen reader is told beside that: whether it is on, how brightly, and what has become
  // of the last command.
  bool is_on() const { return face_.get().on; }
  int level() const { return face_.get().level; }
  // Percent; 0 for the left end of the slider.
  int level_of(int position) const;
  const QSlider* bar() const { return bar_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void bind_picture();
  void bind_name();
  void bind_slider();
  void bind_retry();
  void lay_out();
  void show_face();
  void describe();
  void show_name();
  void show_tip();
  QFont name_font() const;
  void show_menu(const QPoint& place);
  void show_corner();
  bool takes(const QKeyEvent& event);
  void move_to(bool on, int level, bool at_once);
  void show_value();
  void place_bar();
  void keep_from_gap(int position);
  void commit_slider();
  void drop_input();
  bool is_not_sent() const;
  double lit() const;
  double glow() const;
  bool is_up() const { return panel_.line_is_up; }
  void draw_surface(QPainter& painter) const;
  void draw_picture(QPainter& painter) const;
  void draw_words(QPainter& painter) const;
  void draw_pill(QPainter& painter) const;

  HousePanel& panel_;
  const std::size_t slot_;
  Picture& picture_;
  Label& name_;
  Slider& slider_;
  Label& not_sent_;
  Property<CardFace>& face_;
  QString shown_name_;
  QSlider* bar_;
  QPushButton* retry_;
  CardMenuButton* menu_;
  QTimer settled_;             // since the last step with a key or the wheel
  QVariantAnimation turning_;  // how far it is on, and how brightly, from 0 to 1 each
  int shown_ = 0;              // where the bar was put for the control's value
  int at_ = 0;                 // where a person moved it last
  bool shows_focus_ = false;
  bool new_device_ = true;  // what it shows is not to come about by motion
};

}  // namespace homewarden::view
