#pragma once

class QVariantAnimation;
class QWidget;

namespace homewarden::view {

// How long a change of state moves: 150, or 0 for whoever has asked for less motion.
int motion_milliseconds(const QWidget& widget);

// Quick at first, gentle at the end.
void set_motion(QVariantAnimation& animation, int milliseconds);

// What the desktop tells; see DesktopWishes.
void set_less_motion(bool less);

}  // namespace homewarden::view
