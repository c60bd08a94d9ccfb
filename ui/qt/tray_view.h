#pragma once

#include <QObject>

#include "ui/frm_systray.h"

class QSystemTrayIcon;

namespace homewarden::view {

// The icon in the notification area of the desktop.
class TrayView : public QObject {
 public:
  explicit TrayView(FrmSysTray& form);

 private:
  void show_icon(bool loaded);

  FrmSysTray& form_;
  QSystemTrayIcon* icon_ = nullptr;
};

}  // namespace homewarden::view
