#pragma once

#include <QObject>

#include "ui/qt/desktop_wishes.h"

namespace homewarden::view {

// Gives the program its style, and its colours light or dark as the desktop is, at once when that
// changes. Where the desktop asks for high contrast its own colours are the base of it.
class Appearance : public QObject {
 public:
  // To be made once, after the application and before the windows.
  Appearance();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void apply();

  DesktopWishes wishes_;
  bool applying_ = false;
};

}  // namespace homewarden::view
