#pragma once

#include <QAbstractButton>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QVariantAnimation>

#include "ui/house_panel.h"

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

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void bind_picture();
  void bind_name(Label& room);
  void bind_slider();
  void bind_retry();
  void lay_out();
  void show_face();
  void describe();
  void move_to(bool on, bool at_once);
  void show_value();
  void commit_slider();
  void drop_input();
  bool is_not_sent() const;
  double lit() const;
  void draw_surface(QPainter& painter) const;
  void draw_picture(QPainter& painter) const;
  void draw_words(QPainter& painter) const;
  void draw_pill(QPainter& painter) const;

  Picture& picture_;
  Label& name_;
  Slider& slider_;
  Label& not_sent_;
  Property<CardFace>& face_;
  QString shown_name_;
  QSlider* bar_;
  QPushButton* retry_;
  QTimer settled_;             // since the last step with a key or the wheel
  QVariantAnimation turning_;  // 0 off, 1 on
  int shown_ = 0;              // where the bar was put for the control's value
  bool shows_focus_ = false;
  bool new_device_ = true;  // what it shows is not to come about by motion
};

}  // namespace homewarden::view
