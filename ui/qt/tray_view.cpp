#include "ui/qt/tray_view.h"

#include <QGuiApplication>

#include "platform/qt/text_codec.h"
#include "ui/key_codes.h"
#include "ui/qt/popup_menu.h"
#include "ui/qt/watch.h"

namespace homewarden::view {

TrayView::TrayView(FrmSysTray& form, const ProgramMenu& menu)
    : form_(form), bus_([this] { look(); }), embedding_([this] { look(); }) {
  fill_menu(menu_, menu.sspp3);
  form.has_area = false;  // nobody has asked; at the start of the program that takes its time
  watch(form.area_asked, this, [this] { look(); });
  watch(form.loaded.changed, this, [this] { look(); });
  watch(form.ToolTip.changed, this, [this] { show_texts(); });
  watch(form.IconHandle.changed, this, [this] { show_texts(); });
}

void TrayView::look() {
  if (!form_.loaded) {
    icon_.reset();
    return;
  }
  const bool had_area = form_.has_area;
  form_.has_area = has_area();
  if (form_.has_area && !icon_) show_icon();
  if (form_.has_area && !had_area) form_.area_came();
}

// An icon that waits in one kind of area is not shown by the other.
bool TrayView::has_area() {
  const Kind found = kind_ == Kind::kNone ? find_kind() : kind_;
  switch (found) {
    case Kind::kNone:
      return false;
    case Kind::kBus:
      if (!bus_.is_there()) return false;
      break;
    case Kind::kEmbedding:
      if (!embedding_.is_there()) return false;
      break;
    case Kind::kOther:
      break;
  }
  if (!QSystemTrayIcon::isSystemTrayAvailable()) return false;
  kind_ = found;
  return true;
}

TrayView::Kind TrayView::find_kind() const {
  if (bus_.is_there()) return Kind::kBus;
  if (embedding_.is_there()) return Kind::kEmbedding;
  const QString platform = QGuiApplication::platformName();
  const bool is_known = platform == "xcb" || platform.startsWith("wayland");
  return is_known ? Kind::kNone : Kind::kOther;
}

void TrayView::show_icon() {
  icon_ = std::make_unique<QSystemTrayIcon>();
  show_texts();
  // A panel on the bus hands on no place where a menu of ours could open.
  if (kind_ == Kind::kBus) icon_->setContextMenu(&menu_);
  connect(icon_.get(), &QSystemTrayIcon::activated, this,
          [this](QSystemTrayIcon::ActivationReason reason) { tell_click(reason); });
  icon_->show();
}

void TrayView::show_texts() {
  if (!icon_) return;
  const std::string& picture = form_.IconHandle;
  icon_->setIcon(QIcon(picture.empty() ? ":/icons/homewarden.png" : qt::from_code_page(picture)));
  icon_->setToolTip(qt::from_code_page(form_.ToolTip.get()));
}

void TrayView::tell_click(QSystemTrayIcon::ActivationReason reason) {
  switch (reason) {
    case QSystemTrayIcon::Context:
      form_.SysTrayMouseDown(kRightButton);
      break;
    case QSystemTrayIcon::DoubleClick:
      form_.SysTrayDoubleClick(kLeftButton);
      break;
    case QSystemTrayIcon::Trigger:
      form_.SysTrayMouseDown(kLeftButton);
      break;
    default:
      break;  // the middle button is for nothing
  }
}

}  // namespace homewarden::view
