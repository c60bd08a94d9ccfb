#include "ui/qt/motion.h"

#include <QStyle>
#include <QVariantAnimation>
#include <QWidget>

namespace homewarden::view {
namespace {

constexpr int kMilliseconds = 150;

bool less_motion = false;

}  // namespace

int motion_milliseconds(const QWidget& widget) {
  const bool none = less_motion || !widget.isVisible() ||
                    widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0;
  return none ? 0 : kMilliseconds;
}

void set_motion(QVariantAnimation& animation, int milliseconds) {
  animation.setDuration(milliseconds);
  animation.setEasingCurve(QEasingCurve::OutCubic);
}

void set_less_motion(bool less) {
  less_motion = less;
}

}  // namespace homewarden::view
