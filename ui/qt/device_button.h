#pragma once

#include <QAbstractButton>
#include <QPixmap>

namespace homewarden::view {

// The picture of a device, which is the button that switches it.
class DeviceButton : public QAbstractButton {
 public:
  static constexpr int kSide = 90;  // with room for the frame that shows the focus

  explicit DeviceButton(QWidget* parent = nullptr);
  void set_picture(const QString& file);
  // Dimmed while a press waits; it can be pressed all the same.
  void set_dimmed(bool dimmed);
  QSize sizeHint() const override { return QSize(kSide, kSide); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPixmap picture_;
  bool dimmed_ = false;
};

}  // namespace homewarden::view
