#include "ui/qt/row_mark.h"

#include <QApplication>
#include <QStyle>

#include "ui/qt/page.h"

namespace homewarden::view {

QIcon mark_icon() {
  return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
}

QString marked_text(const QString& text, const QString& why) {
  return tr("%1, warning: %2").arg(text, why);
}

}  // namespace homewarden::view
