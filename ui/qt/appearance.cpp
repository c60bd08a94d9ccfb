#include "ui/qt/appearance.h"

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>

#include "ui/qt/high_contrast.h"
#include "ui/qt/house_style.h"
#include "ui/qt/look.h"
#include "ui/qt/motion.h"

namespace homewarden::view {

Appearance::Appearance() {
  QApplication::setStyle(new HouseStyle);
  apply();
  qApp->installEventFilter(this);
  connect(&wishes_, &DesktopWishes::changed, this, &Appearance::apply);
}

void Appearance::apply() {
  const QScopedValueRollback<bool> applying(applying_, true);
  set_less_motion(wishes_.less_motion());
  QApplication::setPalette(QPalette());  // the desktop's own
  use_for_everything(std::nullopt);
  if (wishes_.high_contrast()) {
    const Look look = high_contrast_look(QApplication::palette(), wishes_.dark());
    use_for_everything(look);
    QApplication::setPalette(palette_of(look));
    return;
  }
  const bool dark = wishes_.dark().value_or(look_of(QApplication::palette()).dark);
  QApplication::setPalette(palette_of(dark ? dark_look() : light_look()));
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
  // Every window is told; once is enough.
  if (event->type() == QEvent::ThemeChange && watched->isWindowType() && !applying_) apply();
  return false;
}

}  // namespace homewarden::view
