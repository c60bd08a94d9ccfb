#pragma once

#include <QLabel>
#include <QSlider>
#include <QTimer>

#include "ui/house_panel.h"
#include "ui/qt/card_foot.h"
#include "ui/qt/device_button.h"

namespace homewarden::view {

// One slot of the device panel: picture, name, slider, what became of the last press. Hidden while
// the slot is empty. A press or a move that is under way when the slot gets another device is
// dropped: it was not meant for that one.
class DeviceCard : public QWidget {
 public:
  DeviceCard(HousePanel& panel, std::size_t slot, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void lay_out();
  void bind_picture();
  void bind_name(Label& room);
  void bind_slider();
  void show_state();
  void show_value();
  void show_level(int level);
  void commit_slider();
  void drop_input();

  Picture& picture_;
  Label& name_;
  Slider& slider_;
  DeviceButton* button_;
  QLabel* caption_;
  QSlider* bar_;
  QLabel* level_;
  CardFoot* foot_;
  QTimer settled_;  // since the last step with a key or the wheel
  int shown_ = 0;   // where the bar was put for the control's value
  bool caption_pressed_ = false;
};

}  // namespace homewarden::view
