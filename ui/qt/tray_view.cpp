#include "ui/qt/tray_view.h"

#include <QSystemTrayIcon>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/key_codes.h"
#include "ui/qt/watch.h"

namespace homewarden {

TrayView::TrayView(FrmSysTray& form) : form_(form) {
  const auto look = [this] { form_.has_area = QSystemTrayIcon::isSystemTrayAvailable(); };
  look();
  watch(form.area_asked, this, look);
  watch(form.loaded.changed, this, [this] { show_icon(form_.loaded); });
  watch(form.ToolTip.changed, this, [this] {
    if (icon_) icon_->setToolTip(from_code_page(form_.ToolTip.get()));
  });
}

void TrayView::show_icon(bool loaded) {
  delete std::exchange(icon_, nullptr);
  if (!loaded) return;
  // Where there is no area it waits for one.
  icon_ = new QSystemTrayIcon(QIcon(":/icons/homewarden.png"), this);
  icon_->setToolTip(from_code_page(form_.ToolTip.get()));
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

}  // namespace homewarden
