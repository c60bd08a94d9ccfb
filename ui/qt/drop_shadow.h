#pragma once

#include <QWidget>

namespace homewarden::view {

// The shadow under something that floats over the page: a widget of its own behind it, which takes
// no input. It is painted once for each scale of the screen and then stretched.
class DropShadow : public QWidget {
 public:
  explicit DropShadow(QWidget* parent);

  // Around this place in the parent, as strong as that is opaque.
  void put_around(const QRect& place);
  void set_strength(double strength);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double strength_ = 1;
};

}  // namespace homewarden::view
