#include "ui/qt/tray_view.h"

#include <QGuiApplication>
#include <QSystemTrayIcon>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/key_codes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {

TrayView::TrayView(FrmSysTray& form) : form_(form) {
  form.has_area = QSystemTrayIcon::isSystemTrayAvailable();
  watch(form.area_asked, this, [this] {
    form_.has_area = QSystemTrayIcon::isSystemTrayAvailable();
    if (form_.has_area && !icon_) show_icon(form_.loaded);
  });
  watch(form.loaded.changed, this, [this] { show_icon(form_.loaded); });
  watch(form.ToolTip.changed, this, [this] {
    if (icon_) icon_->setToolTip(qt::from_code_page(form_.ToolTip.get()));
  });
}

void TrayView::show_icon(bool loaded) {
  delete std::exchange(icon_, nullptr);
  // On X11 it waits for an area that is not there yet.
  const bool waits = QGuiApplication::platformName() == "xcb";
  if (!loaded || (!form_.has_area && !waits)) return;
  icon_ = new QSystemTrayIcon(QIcon(":/icons/homewarden.png"), this);
  icon_->setToolTip(qt::from_code_page(form_.ToolTip.get()));
  connect(icon_, &QSystemTrayIcon::activated, this, [this](auto reason) {
    switch (reason) {
      case QSystemTrayIcon::Context:
        form_.SysTrayMouseDown(kRightButton);
        break;
      case QSystemTrayIcon::DoubleClick:
        form_.SysTrayDoubleClick(kLeftButton);
        break;
      default:
        form_.SysTrayMouseDown(kLeftButton);
    }
  });
  icon_->show();
}

}  // namespace homewarden::view
