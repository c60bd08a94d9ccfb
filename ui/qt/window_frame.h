#pragma once

#include <QWidget>

#include "ui/controls.h"

namespace homewarden::view {

// Joins a Window to the top-level widget that shows it, both ways: caption, place, size, state,
// order, and whether it is shown. Lives as long as the widget.
class WindowFrame : public QObject {
 public:
  WindowFrame(Window& form, QWidget* window);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show_place();
  void show_size();
  void show_state();
  void show_visible();
  void tell_place();
  void tell_size();
  void tell_state();
  void raise_boxes();
  void fit_to_screen();
  bool is_as_placed() const;

  Window& form_;
  QWidget& window_;
  bool placing_ = false;  // the window and the form are being brought to the same place and size
};

}  // namespace homewarden::view
