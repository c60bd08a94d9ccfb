#pragma once

#include <QPushButton>

namespace homewarden::view {

// A button that is as wide with a plain caption as with a bold one: one that flashes moves nothing
// around it.
class SteadyButton : public QPushButton {
 public:
  using QPushButton::QPushButton;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }
};

}  // namespace homewarden::view
