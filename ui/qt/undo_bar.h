#pragma once

#include <QPushButton>

#include "ui/controls.h"

namespace homewarden::view {

// A message at the foot of a list that ends in what a press on it does: "Deleted: ... Undo". Shown
// while its label is.
class UndoBar : public QPushButton {
 public:
  UndoBar(Label& message, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace homewarden::view
