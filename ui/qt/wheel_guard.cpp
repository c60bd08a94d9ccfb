#include "ui/qt/wheel_guard.h"

#include <QEvent>

namespace homewarden::view {
namespace {

class WheelGuard : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

void guard_wheel(QWidget* widget) {
  widget->setFocusPolicy(Qt::StrongFocus);
  widget->installEventFilter(new WheelGuard(widget));
}

}  // namespace homewarden::view
