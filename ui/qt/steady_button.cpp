#include "ui/qt/steady_button.h"

#include <QStyleOptionButton>

namespace homewarden::view {

QSize SteadyButton::sizeHint() const {
  QSize caption;
  QStyleOptionButton option;
  initStyleOption(&option);
  for (const bool bold : {false, true}) {
    QFont face = font();
    face.setBold(bold);
    option.fontMetrics = QFontMetrics(face);
    caption = caption.expandedTo(option.fontMetrics.size(Qt::TextShowMnemonic, text()));
  }
  return style()->sizeFromContents(QStyle::CT_PushButton, &option, caption, this);
}

}  // namespace homewarden::view
