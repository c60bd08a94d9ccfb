#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPixmap>
#include <QSlider>
#include <QTimer>

#include "ui/controls.h"

namespace homewarden {

// The picture of a device, which is the button that switches it.
class DeviceButton : public QAbstractButton {
 public:
  explicit DeviceButton(QWidget* parent = nullptr);
  void set_picture(const QString& file);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPixmap picture_;
};

// One slot of the device panel: picture, name, slider. Hidden while the slot is empty.
class DeviceCard : public QWidget {
 public:
  DeviceCard(Picture& picture, Label& name, Slider& slider, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void bind_picture();
  void bind_name();
  void bind_slider();
  void show_level(int level);
  void commit_slider();

  Picture& picture_;
  Label& name_;
  Slider& slider_;
  DeviceButton* button_;
  QLabel* caption_;
  QSlider* bar_;
  QLabel* level_;
  QTimer settled_;  // since the last step with a key or the wheel
};

}  // namespace homewarden
