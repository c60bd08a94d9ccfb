#pragma once

#include <QBoxLayout>
#include <QWidget>

namespace homewarden::view {

// Two columns beside each other, or one below the other where there is no room for both. Widths
// are counted in letters, so that large text has the layout of a smaller window.
class Halves : public QWidget {
 public:
  // Beside each other from `least` on; the right one is then `right` wide, or as wide as the left
  // one when that is 0.
  Halves(int least, int right, QWidget* parent);

  QVBoxLayout* left() { return left_; }
  QVBoxLayout* right() { return right_; }
  QWidget* left_half() { return left_half_; }
  QWidget* right_half() { return right_half_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void fit();

  int least_;
  int right_width_;
  QBoxLayout* columns_;
  QWidget* left_half_;
  QWidget* right_half_;
  QVBoxLayout* left_;
  QVBoxLayout* right_;
};

}  // namespace homewarden::view
