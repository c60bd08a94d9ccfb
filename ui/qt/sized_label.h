#pragma once

#include "ui/qt/scaled_label.h"

namespace homewarden::view {

// The same for sentences: they wrap.
class SizedLabel : public ScaledLabel {
 public:
  using enum Tone;

  SizedLabel(double factor, bool bold, Tone tone, QWidget* parent)
      : ScaledLabel(factor, bold, tone, parent) {
    setWordWrap(true);
  }
};

}  // namespace homewarden::view
