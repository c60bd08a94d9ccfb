#pragma once

#include <QWidget>

namespace homewarden::view {

// A small window above all others that never takes the keyboard. What it does not draw shows what
// is behind it; where the desktop cannot do that it has the shape of a card.
class FloatingWindow : public QWidget {
 public:
  FloatingWindow();

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  // Whether what is behind it shows.
  bool blends() const { return blends_; }

 private:
  void take_shape();

  bool blends_ = true;
};

}  // namespace homewarden::view
